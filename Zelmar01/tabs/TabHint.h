#pragma once

#include <QLabel>
#include <QTimer>

namespace Zelmar01 {

/// The hint below a tab. Stock tool tips keep a distance from the place they are given; this one stands
/// there.
class TTabHint : public QLabel
{
public:
    TTabHint();

    /// Shows a text with its top left corner at a place of the screen, for as long as reading it takes; moved
    /// only as far as the screen's edges ask for.
    void ShowText(const QString &text, QPoint place, QWidget *from);

private:
    QTimer m_end;
};

} // namespace Zelmar01
