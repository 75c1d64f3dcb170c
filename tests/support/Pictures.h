#pragma once

#include <Zelmar01/core/Colors.h>

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QWidget>

#include <algorithm>
#include <functional>
#include <map>

/// Pictures of widgets in several palettes and scales. They are written to the folder that the environment
/// names in ZELMAR01_PICTURES, to be looked at, a folder a palette and scale below it.
class Pictures
{
public:
    /// Calls `take` once for each palette, with the application in that palette.
    static void InEachPalette(const std::function<void(Pictures &)> &take)
    {
        const auto before = QApplication::palette();
        for (const auto &[name, palette] : palettes())
            for (const int ratio : {1, 2}) {
                QApplication::setPalette(palette);
                Pictures pictures(QStringLiteral("%1-%2x").arg(name).arg(ratio), ratio);
                take(pictures);
            }
        QApplication::setPalette(before);
    }

    /// "dark-2x" and the like.
    const QString &Name() const { return m_name; }

    QImage Take(QWidget &widget, const QString &name) const
    {
        QCoreApplication::processEvents();
        QImage image(widget.size() * m_ratio, QImage::Format_RGB32);
        image.setDevicePixelRatio(m_ratio);
        widget.render(&image);
        const auto folder = qEnvironmentVariable("ZELMAR01_PICTURES");
        const QDir place(QDir(folder).filePath(m_name));
        if (!folder.isEmpty() &&
            !(place.mkpath(QStringLiteral(".")) && image.save(place.filePath(name + ".png"))))
            throw std::runtime_error("cannot write to " + place.path().toStdString());
        return image;
    }

    /// The highest contrast of any pixel in `place` (in the widget's coordinates) with the colour that most
    /// pixels there have: what a text there has with its ground, and 1 without any text.
    static double ContrastIn(const QImage &image, const QRect &place)
    {
        const int ratio = static_cast<int>(image.devicePixelRatio());
        const auto part = image.copy(QRect(place.topLeft() * ratio, place.size() * ratio));
        std::map<QRgb, int> counts;
        for (int y = 0; y < part.height(); ++y)
            for (int x = 0; x < part.width(); ++x)
                ++counts[part.pixel(x, y)];
        const auto ground = std::max_element(counts.begin(), counts.end(), [](const auto &a, const auto &b) {
                                return a.second < b.second;
                            })->first;
        double highest = 1;
        for (const auto &[pixel, count] : counts)
            highest = std::max(highest, Zelmar01::ContrastOf(QColor(pixel), QColor(ground)));
        return highest;
    }

private:
    Pictures(QString name, int ratio) : m_name(std::move(name)), m_ratio(ratio) {}

    static QPalette palette(const QColor &ground, const QColor &field, const QColor &text,
                            const QColor &chosen, const QColor &chosenText)
    {
        QPalette palette(text, ground, ground.lighter(150), ground.darker(170), ground.darker(130), text,
                         chosenText, field, ground);
        palette.setColor(QPalette::AlternateBase, field.lighter(120));
        palette.setColor(QPalette::Highlight, chosen);
        palette.setColor(QPalette::HighlightedText, chosenText);
        return palette;
    }

    static std::map<QString, QPalette> palettes()
    {
        return {{QStringLiteral("light"),
                 palette(QColor(0xefefef), Qt::white, Qt::black, QColor(0x1d6aa5), Qt::white)},
                {QStringLiteral("dark"),
                 palette(QColor(0x2b2d31), QColor(0x1e1f22), QColor(0xe3e4e8), QColor(0x285f98), Qt::white)},
                {QStringLiteral("contrast"), palette(Qt::black, Qt::black, Qt::yellow, Qt::cyan, Qt::black)}};
    }

    QString m_name;
    int m_ratio;
};
