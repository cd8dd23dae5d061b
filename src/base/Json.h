// SPDX-License-Identifier: MIT
// JSON text to values and back, for everything that reads or writes it. The library's parser and writer are
// templates that take seconds to compile; they are instantiated here once. Pure; any thread.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <tl/expected.hpp>

namespace lumenvale {

/// For reading. Text of any size and depth can be parsed safely.
using Json = nlohmann::json;
/// For writing: keeps keys in the order in which they were added. The library copies such objects recursively
/// while they grow, so that text which is nested very deeply would exhaust the stack.
using OrderedJson = nlohmann::ordered_json;

/// How many levels `parseOrderedJson` accepts: far more than our own files have, far fewer than a stack holds.
constexpr int deepestJson = 100;

/// Reads one JSON value in UTF-8. The error continues the name of what was read: "is not valid JSON at byte 5".
tl::expected<Json, std::string> parseJson(std::string_view text);

/// The same with keys in order, for text of our own that is changed and written again.
tl::expected<OrderedJson, std::string> parseOrderedJson(std::string_view text, int deepest = deepestJson);

/// In one line, or with `indent` spaces for each level. Bytes that are not UTF-8 become U+FFFD.
std::string writeJson(const OrderedJson& value, std::optional<int> indent = std::nullopt);

} // namespace lumenvale
