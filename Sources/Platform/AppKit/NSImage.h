#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// A picture that the system draws.
class NSImage {
public:
    /// The picture of a system symbol. Null when the system has no symbol of that name.
    static std::shared_ptr<NSImage>
    imageWithSystemSymbolName(std::string_view name,
                              const std::optional<std::string>& accessibilityDescription);

    const std::string& symbolName() const { return symbolName_; }

    /// What a screen reader says; nothing where the text beside the picture says enough.
    const std::optional<std::string>& accessibilityDescription() const {
        return accessibilityDescription_;
    }

    /// Whether only the shape counts, drawn in the colour of the text around it.
    bool isTemplate() const { return isTemplate_; }
    void setTemplate(bool isTemplate) { isTemplate_ = isTemplate; }

private:
    NSImage(std::string_view symbolName, std::optional<std::string> accessibilityDescription)
        : symbolName_(symbolName), accessibilityDescription_(std::move(accessibilityDescription)) {}

    std::string symbolName_;
    std::optional<std::string> accessibilityDescription_;
    bool isTemplate_ = false;
};
