#include "Screenshot.h"

#include "Desktop/Harness/Reply.h"

#include <QImage>

#include <stdexcept>

namespace desktop {

void saveScreenshot(const Client& client, const std::filesystem::path& file,
                    std::optional<WindowPlace> part) {
    auto* x = client.connection();
    const Reply<xcb_get_geometry_reply_t> all(
        xcb_get_geometry_reply(x, xcb_get_geometry(x, client.root()), nullptr));
    const auto place =
        part.value_or(all ? WindowPlace{0, 0, all->width, all->height} : WindowPlace{});
    constexpr std::uint32_t allPlanes = ~0U;
    const Reply<xcb_get_image_reply_t> picture(xcb_get_image_reply(
        x,
        xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, client.root(),
                      static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y),
                      static_cast<std::uint16_t>(place.width),
                      static_cast<std::uint16_t>(place.height), allPlanes),
        nullptr));
    const QImage image = picture ? QImage(xcb_get_image_data(picture.get()), place.width,
                                          place.height, QImage::Format_RGB32)
                                 : QImage();
    if (!image.save(QString::fromStdString(file.string()), "PNG"))
        throw std::runtime_error("cannot save " + file.string());
}

} // namespace desktop
