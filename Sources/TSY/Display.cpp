#include "TSY/Display.h"

namespace tsy {

namespace {

/// Mixes one more field into a hash. A product with the 64-bit golden ratio spreads neighbouring
/// numbers over the whole word.
std::size_t mixed(std::size_t hash, std::uint64_t field) {
    constexpr std::uint64_t goldenRatio = 0x9E3779B97F4A7C15;
    const std::uint64_t product = (hash ^ field) * goldenRatio;
    return product ^ (product >> 32U);
}

} // namespace

std::string sizeText(const ModeSpec& spec, std::size_t room) {
    constexpr std::size_t usualLength = 12;
    std::string text;
    text.reserve(room > 0 ? usualLength + room : 0);
    text += std::to_string(spec.width);
    text += " × ";
    text += std::to_string(spec.height);
    return text;
}

std::string ModeSpec::title() const {
    std::string title = sizeText(*this);
    if (isHiDPI)
        title += "  HiDPI";
    if (refreshRate >= 1)
        title += "  " + std::to_string(refreshRate) + " Hz";
    return title;
}

NSData ModeSpec::json() const {
    return JSONEncode(
        {{"width", width}, {"height", height}, {"isHiDPI", isHiDPI}, {"refreshRate", refreshRate}});
}

std::optional<ModeSpec> ModeSpec::fromJSON(const NSData& data) {
    const auto record = JSONRecord::decode(data);
    if (!record)
        return std::nullopt;
    const auto width = record->integer<std::int64_t>("width");
    const auto height = record->integer<std::int64_t>("height");
    const auto isHiDPI = record->boolean("isHiDPI");
    const auto refreshRate = record->integer<std::int64_t>("refreshRate");
    if (!width || !height || !isHiDPI || !refreshRate)
        return std::nullopt;
    return ModeSpec{*width, *height, *isHiDPI, *refreshRate};
}

} // namespace tsy

std::size_t std::hash<tsy::ModeSpec>::operator()(const tsy::ModeSpec& spec) const noexcept {
    std::size_t mixture = tsy::mixed(0, static_cast<std::uint64_t>(spec.width));
    mixture = tsy::mixed(mixture, static_cast<std::uint64_t>(spec.height));
    mixture = tsy::mixed(mixture, spec.isHiDPI ? 1 : 0);
    return tsy::mixed(mixture, static_cast<std::uint64_t>(spec.refreshRate));
}

std::size_t std::hash<tsy::Display>::operator()(const tsy::Display& display) const noexcept {
    std::size_t mixture = tsy::mixed(display.id, std::hash<std::string>{}(display.key));
    mixture = tsy::mixed(mixture, std::hash<std::string>{}(display.name));
    return tsy::mixed(mixture, display.isMain ? 1 : 0);
}
