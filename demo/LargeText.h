#pragma once

#include <QLabel>

namespace Shop {

/// Makes a text stand out, whatever size the desktop's letters have; a form could only name one size.
inline void MakeLarge(QLabel &label, double times)
{
    auto font = label.font();
    font.setPointSizeF(font.pointSizeF() * times);
    font.setBold(true);
    label.setFont(font);
}

} // namespace Shop
