// SPDX-License-Identifier: MIT
#include "base/Json.h"

namespace lumenvale {

namespace {

template <typename Value>
tl::expected<Value, std::string> parse(std::string_view text,
                                       const typename Value::parser_callback_t& callback = nullptr)
{
    try {
        return Value::parse(text, callback);
    } catch (const typename Value::parse_error& mistake) {
        return tl::unexpected("is not valid JSON at byte " + std::to_string(mistake.byte));
    } catch (const typename Value::exception&) {
        return tl::unexpected<std::string>("has a number that is too large");
    }
}

} // namespace

tl::expected<Json, std::string> parseJson(std::string_view text) { return parse<Json>(text); }

tl::expected<OrderedJson, std::string> parseOrderedJson(std::string_view text, int deepest)
{
    bool isTooDeep = false;
    auto value = parse<OrderedJson>(text, [&](int depth, OrderedJson::parse_event_t, const OrderedJson&) {
        isTooDeep = isTooDeep || depth >= deepest;
        return !isTooDeep;
    });
    if (value && isTooDeep)
        return tl::unexpected<std::string>("is nested too deeply");
    return value;
}

std::string writeJson(const OrderedJson& value, std::optional<int> indent)
{
    return value.dump(indent.value_or(-1), ' ', false, OrderedJson::error_handler_t::replace);
}

} // namespace lumenvale
