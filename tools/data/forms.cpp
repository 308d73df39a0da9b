#include "data/forms.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "foundation/byte_reader.h"
#include "foundation/byte_writer.h"
#include "foundation/code_page.h"

namespace footlight::data {

namespace {

// The numbers of the types.
constexpr std::int32_t kInteger = 1;
constexpr std::int32_t kString = 2;
constexpr std::int32_t kBool = 3;
constexpr std::int32_t kDouble = 4;
constexpr double kThousand = 1000.0;
constexpr int kMostSizes = 64;
constexpr std::int64_t kMostCells = std::int64_t{1} << 24;

std::string_view textOf(std::span<const std::byte> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// Reading

std::optional<Json> readValue(ByteReader& in) {
  switch (in.i32()) {
    case kInteger:
      return Json(in.i32());
    case kBool:
      return Json(in.i32() != 0);
    case kDouble:
      return Json(in.i32() / kThousand);
    case kString: {
      const std::int32_t length = in.i32();
      if (length < 0) return std::nullopt;
      return Json(code_page::toUtf8(textOf(in.bytes(static_cast<std::uint64_t>(length)))));
    }
    default:
      return std::nullopt;
  }
}

std::optional<Json> readArray(std::span<const std::byte> file, std::string* why) {
  ByteReader in(file);
  const std::int32_t count = in.i32();
  Json array = Json::array();
  for (std::int32_t i = 0; i < count; ++i) {
    const auto value = readValue(in);
    *why = "is no array file: value " + std::to_string(i) + " cannot be read";
    if (!value || !in.ok()) return std::nullopt;
    array.push_back(*value);
  }
  *why = "is no array file: its count of values is " + std::to_string(count) + ", and " +
         std::to_string(in.left()) + " bytes are left over";
  return in.ok() && count >= 0 && in.left() == 0 ? std::optional(array) : std::nullopt;
}

// 0 for sizes that no grid has.
std::int64_t cellsOf(const std::vector<std::int32_t>& sizes) {
  std::int64_t cells = 1;
  for (const std::int32_t size : sizes) {
    if (size <= 0 || cells * size > kMostCells) return 0;
    cells *= size;
  }
  return cells;
}

std::optional<Json> readGrid(std::span<const std::byte> file, std::string* why) {
  ByteReader in(file);
  const std::int32_t dimensions = in.i32();
  std::vector<std::int32_t> sizes;
  for (std::int32_t i = 0; i < std::min(dimensions, kMostSizes); ++i) sizes.push_back(in.i32());
  const std::int64_t total = cellsOf(sizes);
  *why = "is no grid file: its sizes are impossible";
  if (!in.ok() || dimensions < 1 || dimensions > kMostSizes || total == 0) return std::nullopt;
  Json cells = Json::array();
  for (std::int32_t index = in.i32(); index < total; index = in.i32()) {
    const auto value = index >= 0 && in.ok() ? readValue(in) : std::nullopt;
    *why = "is no grid file: the value of cell " + std::to_string(index) + " cannot be read";
    if (!value || !in.ok()) return std::nullopt;
    cells.push_back({{"x", index % sizes[0]}, {"y", index / sizes[0]}, {"value", *value}});
  }
  *why = "is no grid file: " + std::to_string(in.left()) + " bytes are left over";
  if (!in.ok() || in.left() != 0) return std::nullopt;
  return Json{{"sizes", sizes}, {"cells", cells}};
}

// Without the line's end.
std::string_view takeLine(std::string_view& rest) {
  const std::size_t end = std::min(rest.find('\n'), rest.size());
  std::string_view line = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

std::optional<Json> readTable(std::span<const std::byte> file, std::string* why) {
  Json rows = Json::array();
  for (std::string_view rest = textOf(file); !rest.empty();) {
    std::string_view line = takeLine(rest);
    if (line.empty()) continue;
    *why = "is no table file: row " + std::to_string(rows.size()) + " does not end with |";
    if (!line.ends_with('|') || line.find('\0') != std::string_view::npos) return std::nullopt;
    Json row = Json::array();
    for (; !line.empty(); line.remove_prefix(line.find('|') + 1))
      row.push_back(code_page::toUtf8(line.substr(0, line.find('|'))));
    rows.push_back(row);
  }
  return rows;
}

std::optional<Json> readIni(std::span<const std::byte> file, std::string* why) {
  Json sections = Json::object();
  std::string section;
  for (std::string_view rest = textOf(file); !rest.empty();) {
    const std::string_view line = takeLine(rest);
    const std::size_t equals = line.find('=');
    if (line.starts_with('[') && line.find(']') != std::string_view::npos) {
      section = code_page::toUtf8(line.substr(1, line.find(']') - 1));
      if (!sections.contains(section)) sections[section] = Json::object();
    } else if (equals != std::string_view::npos && !line.starts_with(';')) {
      const std::string key = code_page::toUtf8(line.substr(0, equals));
      if (!sections[section].contains(key))
        sections[section][key] = code_page::toUtf8(line.substr(equals + 1));
    } else if (!line.empty() && !line.starts_with(';')) {
      *why = "is no INI file: neither a section nor a key: " + code_page::toUtf8(line.substr(0, 40));
      return std::nullopt;
    }
  }
  return sections;
}

// Writing

bool isInt32(const Json& json) {
  return json.is_number_integer() && json.get<std::int64_t>() >= std::numeric_limits<std::int32_t>::min() &&
         json.get<std::int64_t>() <= std::numeric_limits<std::int32_t>::max();
}

bool writeValue(ByteWriter& out, const Json& json, std::string* why) {
  *why = json.dump(-1, ' ', false, Json::error_handler_t::replace) + " is no INTEGER, DOUBLE, BOOL or STRING";
  if (isInt32(json)) {
    out.i32(kInteger).i32(json.get<std::int32_t>());
  } else if (json.is_boolean()) {
    out.i32(kBool).i32(json.get<bool>() ? 1 : 0);
  } else if (json.is_number_float()) {
    const double thousandths = json.get<double>() * kThousand;
    if (std::abs(thousandths) > std::numeric_limits<std::int32_t>::max()) return false;
    out.i32(kDouble).i32(static_cast<std::int32_t>(std::lround(thousandths)));
  } else if (json.is_string()) {
    const auto text = code_page::fromUtf8(json.get<std::string>());
    if (!text) return false;
    out.i32(kString).i32(static_cast<std::int32_t>(text->size())).text(*text);
  } else {
    return false;
  }
  return true;
}

std::optional<Bytes> writeArray(const Json& json, std::string* why) {
  *why = "an array is wanted: [1, 2.5, true, \"text\"]";
  if (!json.is_array()) return std::nullopt;
  ByteWriter out;
  out.i32(static_cast<std::int32_t>(json.size()));
  for (const Json& value : json) {
    if (!writeValue(out, value, why)) return std::nullopt;
  }
  return out.take();
}

bool isCoordinate(const Json& cell, const char* name) {
  return cell.contains(name) && isInt32(cell[name]) && cell[name].get<std::int32_t>() >= 0;
}

// The cells by their index; nothing when one is none of the grid, or stands there twice.
std::optional<std::map<std::int64_t, Json>> cellsByIndex(const Json& cells, std::int64_t width,
                                                         std::int64_t total, std::string* why) {
  std::map<std::int64_t, Json> byIndex;
  for (const Json& cell : cells) {
    *why = "is no cell of this grid: " + cell.dump(-1, ' ', false, Json::error_handler_t::replace);
    const bool isCell =
        cell.is_object() && isCoordinate(cell, "x") && isCoordinate(cell, "y") && cell.contains("value");
    if (!isCell || cell["x"].get<std::int64_t>() >= width) return std::nullopt;
    const std::int64_t index = cell["y"].get<std::int64_t>() * width + cell["x"].get<std::int64_t>();
    if (index >= total || !byIndex.emplace(index, cell["value"]).second) return std::nullopt;
  }
  return byIndex;
}

std::optional<Bytes> writeGrid(const Json& json, std::string* why) {
  *why = "an object is wanted: {\"sizes\": [16, 16], \"cells\": [{\"x\": 0, \"y\": 0, \"value\": 1}]}";
  if (!json.is_object() || !json.contains("sizes") || !json["sizes"].is_array() || !json.contains("cells") ||
      !json["cells"].is_array())
    return std::nullopt;
  std::vector<std::int32_t> sizes;
  for (const Json& size : json["sizes"]) sizes.push_back(isInt32(size) ? size.get<std::int32_t>() : 0);
  const std::int64_t total = cellsOf(sizes);
  *why = "the sizes are impossible";
  if (sizes.empty() || std::ssize(sizes) > kMostSizes || total == 0) return std::nullopt;
  const auto cells = cellsByIndex(json["cells"], sizes[0], total, why);
  if (!cells) return std::nullopt;
  ByteWriter out;
  out.i32(static_cast<std::int32_t>(sizes.size()));
  for (const std::int32_t size : sizes) out.i32(size);
  for (const auto& [index, value] : *cells) {
    out.i32(static_cast<std::int32_t>(index));
    if (!writeValue(out, value, why)) return std::nullopt;
  }
  return out.i32(static_cast<std::int32_t>(total)).take();
}

constexpr FormRow kForms[] = {
    {"array", Form::array, readArray, writeArray},
    {"grid", Form::grid, readGrid, writeGrid},
    {"table", Form::table, readTable, nullptr},
    {"ini", Form::ini, readIni, nullptr},
};

}  // namespace

std::span<const FormRow> forms() { return kForms; }

const FormRow& rowOf(Form form) { return *std::ranges::find(kForms, form, &FormRow::form); }

std::optional<Form> formOf(std::span<const std::byte> file) {
  std::string why;
  for (const FormRow& row : kForms) {
    if (row.read(file, &why)) return row.form;
  }
  return std::nullopt;
}

}  // namespace footlight::data
