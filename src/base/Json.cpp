// SPDX-License-Identifier: MIT
#include "base/Json.h"

namespace lumenvale {

namespace {

template <typename Value>
tl::expected<Value, JsonError> parse(std::string_view text)
{
    try {
        return Value::parse(text);
    } catch (const typename Value::parse_error& mistake) {
        return tl::unexpected(JsonError{mistake.byte, mistake.what()});
    } catch (const typename Value::exception& mistake) {
        return tl::unexpected(JsonError{std::nullopt, mistake.what()});
    }
}

} // namespace

tl::expected<Json, JsonError> parseJson(std::string_view text) { return parse<Json>(text); }

tl::expected<OrderedJson, JsonError> parseOrderedJson(std::string_view text) { return parse<OrderedJson>(text); }

std::string writeJson(const OrderedJson& value, std::optional<int> indent)
{
    return value.dump(indent.value_or(-1), ' ', false, OrderedJson::error_handler_t::replace);
}

} // namespace lumenvale
