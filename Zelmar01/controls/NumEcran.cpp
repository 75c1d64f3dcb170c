#include <Zelmar01/controls/NumEcran.h>

#include <Zelmar01/controls/ControlColors.h>

namespace Zelmar01 {

Tzm_NumEcran::Tzm_NumEcran(QWidget *parent) : TCustomLabel(parent)
{
    setAlign(TPlacement::alRight);
    setAlignment(Qt::AlignRight | Qt::AlignBottom);
    setAnchors(TPlacement::akRight | TPlacement::akBottom);
    setText(QStringLiteral("********"));
    setFont_Color(clNavy);
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(11);
    setFont(font);
    resize(69, 20);
}

} // namespace Zelmar01
