// SPDX-License-Identifier: MIT
#include "platform/qt/PropertyText.h"

#include "base/Json.h"

#include <QByteArray>
#include <QStringDecoder>
#include <cmath>
#include <limits>
#include <optional>

namespace lumenvale {

namespace {

constexpr int deepestNesting = 32;

bool isUtf8(const std::string& text)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString decoded = decoder(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
    return !decoder.hasError() &&
           decoded.toUtf8() == QByteArrayView(text.data(), static_cast<qsizetype>(text.size()));
}

std::string toBase64(const char* bytes, std::size_t size)
{
    return QByteArray::fromRawData(bytes, static_cast<qsizetype>(size)).toBase64().toStdString();
}

std::optional<QByteArray> fromBase64(const OrderedJson& text)
{
    if (!text.is_string())
        return std::nullopt;
    auto decoded = QByteArray::fromBase64Encoding(QByteArray::fromStdString(text.get<std::string>()),
                                                  QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? std::optional(std::move(*decoded)) : std::nullopt;
}

struct ToJson {
    OrderedJson operator()(bool flag) const { return flag; }
    OrderedJson operator()(std::int64_t number) const { return number; }
    OrderedJson operator()(double number) const
    {
        if (std::isfinite(number))
            return number;
        return {{"double", std::isnan(number) ? "nan" : number > 0 ? "inf" : "-inf"}};
    }
    OrderedJson operator()(const std::string& text) const
    {
        return isUtf8(text) ? OrderedJson(text) : OrderedJson{{"string", toBase64(text.data(), text.size())}};
    }
    OrderedJson operator()(const PropertyData& data) const
    {
        return {{"data", toBase64(reinterpret_cast<const char*>(data.data()), data.size())}};
    }
    OrderedJson operator()(const PropertyArray& array) const
    {
        OrderedJson list = OrderedJson::array();
        for (const PropertyValue& each : array)
            list.push_back(std::visit(*this, each.storage));
        return list;
    }
    OrderedJson operator()(const PropertyDictionary& dictionary) const
    {
        OrderedJson list = OrderedJson::array();
        for (const auto& [key, value] : dictionary)
            list.push_back(OrderedJson::array({(*this)(key), std::visit(*this, value.storage)}));
        return {{"dictionary", std::move(list)}};
    }
};

std::optional<PropertyValue> fromJson(const OrderedJson& json, int depth);

std::optional<PropertyValue> arrayFromJson(const OrderedJson& json, int depth)
{
    PropertyArray array;
    for (const OrderedJson& each : json) {
        auto value = fromJson(each, depth - 1);
        if (!value)
            return std::nullopt;
        array.push_back(std::move(*value));
    }
    return array;
}

std::optional<PropertyValue> dictionaryFromJson(const OrderedJson& json, int depth)
{
    if (!json.is_array())
        return std::nullopt;
    PropertyDictionary dictionary;
    for (const OrderedJson& each : json) {
        if (!each.is_array() || each.size() != 2)
            return std::nullopt;
        const auto key = fromJson(each[0], depth - 1);
        auto value = fromJson(each[1], depth - 1);
        const auto* name = key ? key->as<std::string>() : nullptr;
        if (!name || !value)
            return std::nullopt;
        dictionary.emplace_back(*name, std::move(*value));
    }
    return dictionary;
}

std::optional<PropertyValue> objectFromJson(const OrderedJson& json, int depth)
{
    if (json.size() != 1)
        return std::nullopt;
    const auto member = json.begin();
    const std::string& key = member.key();
    const OrderedJson& value = member.value();
    if (key == "dictionary")
        return dictionaryFromJson(value, depth);
    if (key == "double") {
        if (value == "nan")
            return std::numeric_limits<double>::quiet_NaN();
        if (value == "inf" || value == "-inf")
            return std::numeric_limits<double>::infinity() * (value == "inf" ? 1 : -1);
        return std::nullopt;
    }
    const std::optional<QByteArray> bytes = fromBase64(value);
    if (key == "data" && bytes)
        return PropertyData(bytes->begin(), bytes->end());
    if (key == "string" && bytes)
        return bytes->toStdString();
    return std::nullopt;
}

std::optional<PropertyValue> fromJson(const OrderedJson& json, int depth)
{
    if (depth == 0)
        return std::nullopt;
    switch (json.type()) {
    case OrderedJson::value_t::boolean:
        return json.get<bool>();
    case OrderedJson::value_t::number_integer:
        return json.get<std::int64_t>();
    case OrderedJson::value_t::number_unsigned:
        if (json.get<std::uint64_t>() > std::uint64_t{std::numeric_limits<std::int64_t>::max()})
            return std::nullopt;
        return json.get<std::int64_t>();
    case OrderedJson::value_t::number_float:
        return json.get<double>();
    case OrderedJson::value_t::string:
        return json.get<std::string>();
    case OrderedJson::value_t::array:
        return arrayFromJson(json, depth);
    case OrderedJson::value_t::object:
        return objectFromJson(json, depth);
    default:
        return std::nullopt;
    }
}

} // namespace

std::string encodeProperty(const PropertyValue& value)
{
    const auto* text = value.as<std::string>();
    if (text && isUtf8(*text) && decodeProperty(*text) == value)
        return *text;
    return writeJson(std::visit(ToJson(), value.storage));
}

PropertyValue decodeProperty(const std::string& text)
{
    const OrderedJson json = OrderedJson::parse(text, nullptr, false);
    if (json.is_discarded())
        return text;
    return fromJson(json, deepestNesting).value_or(text);
}

} // namespace lumenvale
