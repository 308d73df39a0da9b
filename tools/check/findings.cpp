#include "findings.h"

#include <algorithm>
#include <cstdio>
#include <tuple>

#include "foundation/code_page.h"

namespace footlight::check {

namespace {

constexpr std::size_t kExcerpt = 60;

std::string readable(std::string_view text) {
  std::string plain(text);
  const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; };
  std::replace_if(plain.begin(), plain.end(), isControl, '?');
  return code_page::toUtf8(plain);
}

std::string quoted(std::string_view text) {
  std::string json = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') json += '\\';
    if (static_cast<unsigned char>(c) < ' ') {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
      json += escaped;
    } else {
      json += c;
    }
  }
  return json + '"';
}

}  // namespace

const char* kindName(Kind kind) {
  constexpr const char* kNames[] = {"definition", "type",      "property", "signal",    "object",   "method",
                                    "behaviour",  "arguments", "operator", "statement", "brackets", "slash",
                                    "separator",  "event",     "markup",   "file",      "limit"};
  return kNames[static_cast<std::size_t>(kind)];
}

bool Finding::operator<(const Finding& other) const {
  const auto members = [](const Finding& finding) {
    return std::tie(finding.file, finding.line, finding.kind, finding.object, finding.text,
                    finding.suggestion);
  };
  return members(*this) < members(other);
}

void Findings::add(Finding finding) {
  finding.object = readable(finding.object);
  finding.text = readable(finding.text);
  finding.suggestion = readable(finding.suggestion);
  finding.line = std::max(finding.line, 1);
  if (!isFull()) {
    list_.insert(std::move(finding));
  } else if (!list_.contains(finding)) {
    ++dropped_;
  }
}

std::string asLine(const Finding& finding) {
  std::string line =
      finding.file + ":" + std::to_string(finding.line) + ": " + kindName(finding.kind) + ": " + finding.text;
  if (!finding.suggestion.empty()) line += " (did you mean " + finding.suggestion + "?)";
  return line;
}

std::string asJson(const Findings& findings) {
  std::string json = "[";
  for (const Finding& finding : findings.list()) {
    json += json.size() > 1 ? ",\n " : "\n ";
    json += "{\"file\": " + quoted(finding.file) + ", \"line\": " + std::to_string(finding.line) +
            ", \"kind\": " + quoted(kindName(finding.kind)) + ", \"object\": " + quoted(finding.object) +
            ", \"text\": " + quoted(finding.text) + ", \"suggestion\": " + quoted(finding.suggestion) + "}";
  }
  return json + (findings.isEmpty() ? "]" : "\n]");
}

std::string excerpt(std::string_view text) {
  return text.size() <= kExcerpt ? std::string(text) : std::string(text.substr(0, kExcerpt)) + "...";
}

}  // namespace footlight::check
