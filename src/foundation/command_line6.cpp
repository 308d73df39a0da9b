#include "foundation/command_line6.h"

#include <algorithm>

#include "foundation/string_tokenizer.h"

namespace footlight {

CCommandLine6::CCommandLine6(std::string_view commandLine) {
  CStringTokenizer tokenizer(commandLine, " ");
  while (tokenizer.hasMoreTokens()) {
    CXString token = tokenizer.nextToken();
    if (!tokens_.empty() && tokens_.back() == token) break;
    tokens_.push_back(std::move(token));
  }
  parse();
}

bool CCommandLine6::findToken(std::string_view name) const {
  return std::any_of(tokens_.begin(), tokens_.end(), [&](const CXString& token) {
    const char first = token.GetAt(0);
    return (first == '-' || first == '/') && token.slice(1, token.Length()) == name;
  });
}

CXString CCommandLine6::getNextToken(std::string_view name) const {
  const auto found = std::find_if(tokens_.begin(), tokens_.end(), [&](const CXString& token) {
    const char first = token.GetAt(0);
    return token == name || ((first == '-' || first == '/') && token.slice(1, token.Length()) == name);
  });
  return found == tokens_.end() || found + 1 == tokens_.end() ? CXString() : *(found + 1);
}

void CCommandLine6::parse() {
  music_ = !findToken("nomusic");
  sound_ = !findToken("nosound");
  window_ = findToken("window");
  gfx_ = findToken("nogfx");
  server_ = findToken("server");
  client_ = findToken("client");
  pageFlipping_ = findToken("pf");
  videoMemory_ = findToken("vmem");
  code_ = findToken("code");
  decode_ = findToken("decode");
  remove_ = findToken("remove");
  cheat_ = findToken("brunakolte") || findToken("cheat");
  toBinary_ = findToken("2bin");
  forceCnv_ = findToken("forceCNV");
  debug_ = findToken("debug");
  bigFile_ = findToken("bigfile");
  log_ = findToken("log");
  if (findToken("res")) {
    const CXString first = getNextToken("res");
    // The height is looked up behind the first token that reads like the width.
    const CXString second = first.IsEmpty() ? CXString() : getNextToken(first);
    if (!first.IsEmpty()) width_ = first.toNumber();
    if (!second.IsEmpty()) height_ = second.toNumber();
  }
  if (findToken("path")) path_ = getNextToken("path");
}

}  // namespace footlight
