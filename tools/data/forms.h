#pragma once

// The files that games keep their data in, as JSON. Texts in files are of code page 1250, those in JSON
// UTF-8.
//
//   array   [7, 2.5, true, "text"]
//   grid    {"sizes": [16, 16], "cells": [{"x": 1, "y": 2, "value": 7}]}
//   table   [["anna", "7"], ["bert", "8"]]
//   ini     {"SECTION": {"KEY": "value"}}
//
// A number with a point is a DOUBLE, of which files keep three decimals.

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace footlight::data {

using Json = nlohmann::ordered_json;
using Bytes = std::vector<std::byte>;

enum class Form { array, grid, table, ini };

struct FormRow {
  const char* word;
  Form form;
  // Nothing, and the reason in `why`, for bytes that are no such file from end to end.
  std::optional<Json> (*read)(std::span<const std::byte> file, std::string* why);
  // Null for files that any editor writes.
  std::optional<Bytes> (*write)(const Json& json, std::string* why);
};
std::span<const FormRow> forms();
const FormRow& rowOf(Form form);

// The form whose rules the whole file follows; files of numbers go before texts.
std::optional<Form> formOf(std::span<const std::byte> file);

}  // namespace footlight::data
