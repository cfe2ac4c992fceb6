#include "Linux/Sessions/Gnome/Keybindings/DesktopSettings.h"

#include "Linux/Sessions/Gnome/Keybindings/GioFunctions.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tessary {

namespace {

constexpr const char* textType = "s";
constexpr const char* listType = "as";
constexpr const char* numberType = "u";

/// Only after `gioFunctions` has answered some.
const GioFunctions& gio() {
    return *gioFunctions();
}

using Value = std::unique_ptr<GVariant, decltype(&g_variant_unref)>;

Value valueOf(GSettings* settings, const std::string& key) {
    return {gio().value(settings, key.c_str()), gio().releaseValue};
}

bool isOf(const Value& value, const char* type) {
    return gio().isOfType(value.get(), reinterpret_cast<const GVariantType*>(type)) != FALSE;
}

std::vector<std::string> listOf(const Value& value) {
    gsize count = 0;
    const std::unique_ptr<const gchar*, decltype(&g_free)> texts(gio().list(value.get(), &count),
                                                                 gio().free);
    return {texts.get(), texts.get() + count};
}

} // namespace

struct DesktopSettings::Opened {
    std::unique_ptr<GSettingsSchema, decltype(&g_settings_schema_unref)> schema;
    std::unique_ptr<GSettings, decltype(&g_object_unref)> settings;
};

std::unique_ptr<DesktopSettings> DesktopSettings::open(const std::string& schema,
                                                       const std::string& path) {
    if (gioFunctions() == nullptr)
        return nullptr;
    // Asked first, since the library ends the process over a schema that is not installed.
    auto* schemas = gio().schemas();
    auto* found = schemas != nullptr ? gio().lookup(schemas, schema.c_str(), TRUE) : nullptr;
    if (found == nullptr)
        return nullptr;
    auto* settings = gio().settings(found, nullptr, path.empty() ? nullptr : path.c_str());
    return std::unique_ptr<DesktopSettings>(new DesktopSettings(
        std::make_unique<Opened>(Opened{{found, gio().releaseSchema}, {settings, gio().release}})));
}

DesktopSettings::DesktopSettings(std::unique_ptr<Opened> opened) : opened_(std::move(opened)) {}

DesktopSettings::~DesktopSettings() = default;

/// Asked before each access, since the library ends the process over a key that is not there.
bool DesktopSettings::has(const std::string& key, const char* type) const {
    return gio().hasKey(opened_->schema.get(), key.c_str()) != FALSE &&
           isOf(valueOf(opened_->settings.get(), key), type);
}

std::vector<std::string> DesktopSettings::keys() const {
    const std::unique_ptr<gchar*, decltype(&g_strfreev)> names(gio().keys(opened_->schema.get()),
                                                               gio().freeList);
    std::vector<std::string> result;
    for (auto* const* name = names.get(); *name != nullptr; ++name)
        result.emplace_back(*name);
    return result;
}

std::vector<std::string> DesktopSettings::list(const std::string& key) const {
    return has(key, listType) ? listOf(valueOf(opened_->settings.get(), key))
                              : std::vector<std::string>();
}

std::string DesktopSettings::text(const std::string& key) const {
    return has(key, textType) ? gio().text(valueOf(opened_->settings.get(), key).get(), nullptr)
                              : std::string();
}

unsigned DesktopSettings::number(const std::string& key) const {
    return has(key, numberType) ? gio().number(valueOf(opened_->settings.get(), key).get()) : 0;
}

std::vector<std::string> DesktopSettings::allTexts() const {
    std::vector<std::string> result;
    for (const std::string& key : keys()) {
        const Value value = valueOf(opened_->settings.get(), key);
        if (isOf(value, textType))
            result.emplace_back(gio().text(value.get(), nullptr));
        else if (isOf(value, listType))
            std::ranges::move(listOf(value), std::back_inserter(result));
    }
    return result;
}

void DesktopSettings::setList(const std::string& key, const std::vector<std::string>& value) {
    if (!has(key, listType) || list(key) == value)
        return;
    std::vector<const gchar*> texts;
    texts.reserve(value.size());
    for (const std::string& text : value)
        texts.push_back(text.c_str());
    gio().setValue(opened_->settings.get(), key.c_str(),
                   gio().newList(texts.data(), static_cast<gssize>(texts.size())));
}

void DesktopSettings::setText(const std::string& key, const std::string& value) {
    if (has(key, textType) && text(key) != value)
        gio().setValue(opened_->settings.get(), key.c_str(), gio().newText(value.c_str()));
}

void DesktopSettings::reset() {
    for (const std::string& key : keys())
        gio().reset(opened_->settings.get(), key.c_str());
}

void DesktopSettings::finishWriting() {
    if (gioFunctions() != nullptr)
        gio().sync();
}

} // namespace tessary
