#include <Zelmar01/controls/NumEcran.h>

namespace Zelmar01 {

Tzm_NumEcran::Tzm_NumEcran(QWidget *parent) : TCustomLabel(parent)
{
    Tzm_NumEcran::resetAlign();
    setAlignment(Qt::AlignRight | Qt::AlignBottom);
    Tzm_NumEcran::resetAnchors();
    setText(QStringLiteral("********"));
    Tzm_NumEcran::resetFont_Color();
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(11);
    setFont(font);
    setParentFont(false);
    resize(69, 20);
}

} // namespace Zelmar01
