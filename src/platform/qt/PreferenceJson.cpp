// SPDX-License-Identifier: MIT
#include "platform/qt/PreferenceJson.h"

#include <QByteArray>
#include <string_view>
#include <utility>

namespace lumenvale {

namespace {

constexpr char dataTag[] = "$data";
constexpr char valueTag[] = "$value";
/// Below what `parseOrderedJson` accepts, because the document stands one level deeper in the file.
constexpr int deepestDocument = deepestJson - 1;

/// The presets, and the copies of presets that could not be read.
bool isDocumentKey(const std::string& key)
{
    return key == "brightnessPresets" || key.starts_with("brightnessPresets.");
}

struct ToJson {
    OrderedJson operator()(bool flag) const { return flag; }
    OrderedJson operator()(std::int64_t number) const { return number; }
    OrderedJson operator()(double number) const { return number; }
    OrderedJson operator()(const std::string& text) const { return text; }
    OrderedJson operator()(const PropertyData& data) const
    {
        const auto* bytes = reinterpret_cast<const char*>(data.data());
        return {{dataTag, QByteArray::fromRawData(bytes, qsizetype(data.size())).toBase64().toStdString()}};
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
        OrderedJson object = OrderedJson::object();
        for (const auto& [key, value] : dictionary)
            object[key.starts_with('$') ? '$' + key : key] = std::visit(*this, value.storage);
        return object;
    }
};

/// The document that `value` holds, when the document's text gives back its very bytes.
std::optional<OrderedJson> documentIn(const PropertyValue& value)
{
    const auto* data = value.as<PropertyData>();
    if (!data)
        return std::nullopt;
    const std::string_view text(reinterpret_cast<const char*>(data->data()), data->size());
    auto document = parseOrderedJson(text, deepestDocument);
    if (!document || (document->is_object() && document->contains(valueTag)) || writeJson(*document) != text)
        return std::nullopt;
    return std::move(*document);
}

std::optional<PropertyValue> fromJson(const OrderedJson& json);

std::optional<PropertyValue> dataFromJson(const OrderedJson& json)
{
    if (!json.is_string())
        return std::nullopt;
    const auto text = QByteArray::fromStdString(json.get<std::string>());
    const auto decoded = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
        return std::nullopt;
    return PropertyData((*decoded).begin(), (*decoded).end());
}

std::optional<PropertyValue> arrayFromJson(const OrderedJson& json)
{
    PropertyArray array;
    for (const OrderedJson& each : json) {
        auto value = fromJson(each);
        if (!value)
            return std::nullopt;
        array.push_back(std::move(*value));
    }
    return array;
}

std::optional<PropertyValue> dictionaryFromJson(const OrderedJson& json)
{
    PropertyDictionary dictionary;
    for (const auto& [key, each] : json.items()) {
        auto value = fromJson(each);
        const bool isTag = key.starts_with('$') && !key.starts_with("$$");
        if (!value || isTag)
            return std::nullopt;
        dictionary.emplace_back(key.starts_with('$') ? key.substr(1) : key, std::move(*value));
    }
    return dictionary;
}

std::optional<PropertyValue> fromJson(const OrderedJson& json)
{
    switch (json.type()) {
    case OrderedJson::value_t::boolean:
        return json.get<bool>();
    case OrderedJson::value_t::number_integer:
        return json.get<std::int64_t>();
    case OrderedJson::value_t::number_unsigned:
        if (std::in_range<std::int64_t>(json.get<std::uint64_t>()))
            return json.get<std::int64_t>();
        return json.get<double>();
    case OrderedJson::value_t::number_float:
        return json.get<double>();
    case OrderedJson::value_t::string:
        return json.get<std::string>();
    case OrderedJson::value_t::array:
        return arrayFromJson(json);
    case OrderedJson::value_t::object:
        return json.size() == 1 && json.contains(dataTag) ? dataFromJson(json[dataTag]) : dictionaryFromJson(json);
    default:
        return std::nullopt;
    }
}

} // namespace

OrderedJson preferenceToJson(const std::string& key, const PropertyValue& value)
{
    if (!isDocumentKey(key))
        return std::visit(ToJson(), value.storage);
    if (auto document = documentIn(value))
        return std::move(*document);
    return {{valueTag, std::visit(ToJson(), value.storage)}};
}

std::optional<PropertyValue> preferenceFromJson(const std::string& key, const OrderedJson& json)
{
    if (!isDocumentKey(key))
        return fromJson(json);
    if (json.is_object() && json.contains(valueTag))
        return json.size() == 1 ? fromJson(json[valueTag]) : std::nullopt;
    const std::string text = writeJson(json);
    return PropertyData(text.begin(), text.end());
}

} // namespace lumenvale
