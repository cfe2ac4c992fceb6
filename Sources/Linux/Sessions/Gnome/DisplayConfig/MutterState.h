// What Mutter tells of the displays, as plain values (org.gnome.Mutter.DisplayConfig.xml in
// Mutter's sources describes them).
#pragma once

#include "Linux/Displays/Geometry.h"

#include <QList>
#include <QString>
#include <QVariantMap>

#include <cstdint>
#include <vector>

namespace tessary {

struct MutterMode {
    QString id; ///< of this monitor's modes, such as "1920x1080@60.000"
    PixelSize size;
    double rate = 0; ///< hertz
    double preferredScale = 1;
    QList<double> scales; ///< that Mutter takes for this mode; it wants exactly these numbers
    bool isCurrent = false;
    bool isPreferred = false;
    bool isInterlaced = false;
    bool isVariableRate = false; ///< the twin of another mode, with a rate that follows the picture

    bool isUsable() const { return !isInterlaced && !isVariableRate; }

    friend bool operator==(const MutterMode&, const MutterMode&) = default;
};

struct MutterMonitor {
    QString connector; ///< "HDMI-1", as an X server names it
    QString vendor;
    QString product;
    QString serial;
    QString displayName; ///< in the user's language
    bool isBuiltin = false;
    QVariantMap settings; ///< what a configuration must repeat for the monitor to keep it
    QList<MutterMode> modes;
    std::vector<std::uint8_t> edid; ///< not Mutter's; empty where it is not known

    const MutterMode* currentMode() const;

    friend bool operator==(const MutterMonitor&, const MutterMonitor&) = default;
};

/// What one or several monitors show: a display.
struct MutterLogicalMonitor {
    int x = 0;
    int y = 0;
    double scale = 1;
    std::uint32_t transform = 0; ///< the odd ones stand the picture on its side
    bool isPrimary = false;
    QList<QString> connectors; ///< of its monitors; never empty

    bool isTurned() const { return transform % 2 != 0; }

    friend bool operator==(const MutterLogicalMonitor&, const MutterLogicalMonitor&) = default;
};

enum class LayoutMode : std::uint32_t {
    logical = 1, ///< places are in points
    physical = 2 ///< places are in pixels, whatever the scales
};

struct MutterState {
    std::uint32_t serial = 0; ///< what a configuration must name to be taken
    QList<MutterMonitor> monitors;
    QList<MutterLogicalMonitor> logicalMonitors;
    LayoutMode layoutMode = LayoutMode::logical;
    bool canChangeLayoutMode = false;
    bool isScaleGlobal = false; ///< all displays must have the same scale

    /// Null when there is none.
    const MutterMonitor* monitor(const QString& connector) const;
    MutterMonitor* monitor(const QString& connector);

    friend bool operator==(const MutterState&, const MutterState&) = default;
};

} // namespace tessary
