#include "Linux/BoxView.h"
#include "Linux/Desktop/Views/Colours.h"
#include "Linux/Desktop/Views/ViewWidget.h"
#include "Linux/TestApplication.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QFontMetrics>
#include <QImage>
#include <QMouseEvent>
#include <QTest>

namespace tessary {
namespace {

struct ViewTest : testing::Test {
    ViewTest() {
        window.resize(200, 100);
        widget->move(20, 10);
    }

    QImage drawn(double scale) const {
        QImage image((QSizeF(widget->size()) * scale).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        widget->render(&image);
        return image;
    }
    QRgb colour(const NSColor& color) const { return colourOf(color, widget->palette()).rgb(); }

    TestApplication<QApplication> application;
    std::shared_ptr<BoxView> view = std::make_shared<BoxView>();
    QWidget window;
    QWidget* widget = widgetOf(view, &window);
};

TEST_F(ViewTest, LinesCoverWholePixelsAtEveryScale) {
    view->text = "";
    // Of the wide line a quarter lies outside the view.
    for (const auto& [scale, lineWidth, end] :
         {std::tuple(1.0, 1, 1), {1.5, 1, 1}, {2, 1, 2}, {1, 2, 2}, {1.5, 2, 3}, {2, 2, 3}}) {
        view->lineWidth = lineWidth;
        const QImage image = drawn(scale);
        const QPoint middle = image.rect().center();
        for (int i = 0; i < 6; ++i) {
            const QRgb expected = colour(i < end ? view->outline : view->background);
            for (const QPoint& point : {QPoint(middle.x(), i), QPoint(i, middle.y()),
                                        QPoint(middle.x(), image.height() - 1 - i),
                                        QPoint(image.width() - 1 - i, middle.y())})
                EXPECT_EQ(image.pixel(point), expected) << scale << ' ' << lineWidth << ' ' << i;
        }
    }
}

TEST_F(ViewTest, TextStandsUprightInTheMiddleInTheDesktopsFont) {
    for (const double scale : {1.0, 2.0}) {
        const QImage image = drawn(scale);
        QRect ink;
        for (int y = 6; y < image.height() - 6; ++y)
            for (int x = 10; x < image.width() - 10; ++x)
                if (qGray(image.pixel(x, y)) < 128)
                    ink |= QRect(x, y, 1, 1);
        EXPECT_NEAR(QRectF(ink).center().x(), image.width() / 2.0, scale) << scale;
        EXPECT_NEAR(QRectF(ink).center().y(), image.height() / 2.0, 2 * scale) << scale;
        EXPECT_LT(qGray(image.pixel(ink.left(), ink.top() + 1)), 128)
            << "the foot of the p is below";
    }
    const NSTextAttributes own{NSFont::systemFontOfSize(13, NSFontWeight::regular), {}};
    EXPECT_EQ(NSStringSizeWithAttributes("Hü", own).width,
              QFontMetricsF(QApplication::font()).horizontalAdvance(QStringLiteral("Hü")));
}

TEST_F(ViewTest, ActsOnClicksKeysAndAssistiveTechnologies) {
    widget->setAccessibleName(QStringLiteral("Shortcut"));
    for (const auto& [button, y] :
         {std::pair(Qt::LeftButton, 0), {Qt::RightButton, 5}, {Qt::LeftButton, 23}}) {
        QMouseEvent event(QEvent::MouseButtonPress, QPointF(3, y), QPointF(23, y + 10), {}, button,
                          button, {});
        QCoreApplication::sendEvent(widget, &event);
    }
    for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape})
        QTest::keyPress(widget, key);
    drawn(1);
    auto* accessible = QAccessible::queryAccessibleInterface(widget);
    EXPECT_EQ(accessible->role(), QAccessible::Button);
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Shortcut"));
    EXPECT_EQ(accessible->text(QAccessible::Description), QStringLiteral("Hop"));
    const auto seen = std::make_shared<int>(0);
    const auto monitor = NSEvent::addLocalMonitorForEventsMatchingMask(2, [seen](const NSEvent&) {
        return ++*seen == 1 ? NSEvent::Passage::passOn : NSEvent::Passage::swallow;
    });
    for (int presses = 0; presses < 2; ++presses)
        accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    NSEvent::removeMonitor(*monitor);
    EXPECT_EQ(*seen, 2);
    const CGPoint middle{65, 11.5};
    EXPECT_EQ(view->clicks,
              (std::vector<CGPoint>{{3, 23.5}, {3, 0.5}, middle, middle, middle, middle}));
}

TEST_F(ViewTest, ViewAndWidgetOutliveEachOther) {
    EXPECT_EQ(existingWidget(*view), widget);
    delete widget;
    EXPECT_EQ(existingWidget(*view), nullptr);
    view->setNeedsDisplay();
    NSStringDrawAtPoint("nowhere", {}, {});
    EXPECT_EQ(view->window(), nullptr);
    widget = widgetOf(view, &window);
    view.reset();
    drawn(1);
}

} // namespace
} // namespace tessary
