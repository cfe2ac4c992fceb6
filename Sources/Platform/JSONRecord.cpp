#include "Platform/Foundation.h"

#include <algorithm>
#include <cstddef>

#include <nlohmann/json.hpp>

namespace {

/// The parser takes a NUL byte for the end of the text and skips a byte-order mark; neither is
/// allowed in JSON.
bool hasForeignBytes(const NSData& data) {
    return std::find(data.begin(), data.end(), 0) != data.end() ||
           (!data.empty() && data.front() == 0xEF);
}

/// The same text with shorter numbers: those of thousands of digits and those like 1e400 are JSON,
/// but the parser refuses them as too large. No integer that a record can hold is changed.
NSData withShortNumbers(const NSData& text) {
    constexpr std::size_t mostDigits = 30;
    constexpr std::size_t mostOfExponent = 2;
    NSData result;
    bool isInString = false;
    bool isEscaped = false;
    std::size_t most = mostDigits;
    std::size_t digits = 0; // in a row
    for (const std::uint8_t byte : text) {
        const bool isDigit = !isInString && byte >= '0' && byte <= '9';
        digits = isDigit ? digits + 1 : 0;
        if (digits > most)
            continue;
        result.push_back(byte);
        if (byte == '"' && !isEscaped)
            isInString = !isInString;
        isEscaped = isInString && byte == '\\' && !isEscaped;
        if (byte == 'e' || byte == 'E')
            most = mostOfExponent;
        else if (!isDigit && byte != '+' && byte != '-')
            most = mostDigits;
    }
    return result;
}

std::optional<JSONValue> valueOf(const nlohmann::json& json) {
    if (json.is_boolean())
        return json.get<bool>();
    if (json.is_number_unsigned())
        return json.get<std::uint64_t>();
    if (json.is_number_integer())
        return json.get<std::int64_t>();
    return std::nullopt;
}

} // namespace

NSData JSONEncode(std::initializer_list<std::pair<std::string_view, JSONValue>> members) {
    auto json = nlohmann::ordered_json::object();
    for (const auto& [name, value] : members)
        std::visit([&json, &name = name](auto member) { json[std::string(name)] = member; }, value);
    const std::string text = json.dump();
    return {text.begin(), text.end()};
}

std::optional<JSONRecord> JSONRecord::decode(const NSData& data) {
    if (hasForeignBytes(data))
        return std::nullopt;
    const auto json =
        nlohmann::json::parse(withShortNumbers(data), nullptr, /*allow_exceptions=*/false);
    if (!json.is_object())
        return std::nullopt;
    JSONRecord record;
    for (const auto& [name, member] : json.items())
        if (const auto value = valueOf(member))
            record.members_.emplace(name, *value);
    return record;
}

std::optional<bool> JSONRecord::boolean(const std::string& name) const {
    const auto member = members_.find(name);
    if (member == members_.end())
        return std::nullopt;
    const auto* value = std::get_if<bool>(&member->second);
    return value != nullptr ? std::optional(*value) : std::nullopt;
}
