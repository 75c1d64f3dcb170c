#include "CodesDialog.h"

#include <support/Pictures.h>

#include <QFontInfo>
#include <QLabel>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

constexpr double readable = 4.5;

} // namespace

// With ZELMAR01_PICTURES=folder in the environment the pictures are written there.
TEST_F(CodesDialogTest, canBeReadInEveryPaletteAndWithALargeFont)
{
    ASSERT_FALSE(QFontInfo(QApplication::font()).family().isEmpty());
    const auto font = QApplication::font();
    for (const double size : {1.0, 1.5}) {
        auto scaled = font;
        scaled.setPointSizeF(font.pointSizeF() * size);
        QApplication::setFont(scaled);
        Pictures::InEachPalette([&](Pictures &pictures) {
            // The dialog's own light blue, and on a dark desktop a dark one.
            const auto hasItsColour = [&](const QImage &seen) {
                const QColor ground = seen.pixelColor(1, 1);
                return pictures.Name().startsWith(u"light"_s)
                           ? ground == QColor(0xd4dfff)
                           : ground.blue() > ground.red() && ground.lightness() < 90;
            };
            const auto look = [&](CodesDialog dialog, const QString &name) {
                const auto seen = pictures.Take(dialog.Window, name);
                EXPECT_TRUE(hasItsColour(seen)) << pictures.Name().toStdString();
                for (auto *const widget : dialog.Window.findChildren<QWidget *>()) {
                    const auto *label = qobject_cast<const QLabel *>(widget);
                    const auto *box = qobject_cast<const QLineEdit *>(widget);
                    const bool hasText = (label && !label->text().isEmpty()) ||
                                         (box && !box->text().trimmed().isEmpty()) ||
                                         qobject_cast<const QAbstractButton *>(widget);
                    if (!hasText || widget->visibleRegion().boundingRect() != widget->rect())
                        continue;
                    const QRect place(widget->mapTo(&dialog.Window, QPoint()), widget->size());
                    EXPECT_GE(Pictures::ContrastIn(seen, place.adjusted(4, 3, -4, -3)), readable)
                        << pictures.Name().toStdString() << ' ' << widget->objectName().toStdString()
                        << (label ? label->text().toStdString() : "");
                }
            };
            const auto lookTwice = [&](CodesDialog dialog) {
                dialog.Click("IniEdit");
                look(dialog, size > 1 ? u"codes-large"_s : u"codes"_s);
                dialog.Click(dialog.Notation(2));
                look(dialog, size > 1 ? u"characters-large"_s : u"characters"_s);
            };
            execute(ptIBM, lookTwice, [](std::string_view) {});
        });
    }
    QApplication::setFont(font);
}
