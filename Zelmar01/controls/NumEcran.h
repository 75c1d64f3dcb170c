#pragma once

#include <Zelmar01/controls/ControlColors.h>
#include <Zelmar01/controls/CustomLabel.h>

namespace Zelmar01 {

/// The small number in the bottom right corner of a screen by which users and support name it. It stands on
/// the right side of its form, and reads "********" until the form gives it its number.
class Tzm_NumEcran : public TCustomLabel
{
    Q_OBJECT
public:
    explicit Tzm_NumEcran(QWidget *parent = nullptr);

protected:
    void resetAlign() override { setAlign(TPlacement::alRight); }
    void resetAnchors() override { setAnchors(TPlacement::akRight | TPlacement::akBottom); }
    void resetFont_Color() override { setFont_Color(clNavy); }
};

} // namespace Zelmar01
