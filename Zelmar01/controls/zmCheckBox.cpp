#include <Zelmar01/controls/zmCheckBox.h>

#include <Zelmar01/controls/ControlColors.h>
#include <Zelmar01/core/WidgetBoxes.h>
#include <Zelmar01/data/Field.h>

#include <QPainter>
#include <QStyleOptionButton>

#include <optional>

namespace Zelmar01 {

TzmCheckEdit::TzmCheckEdit(QWidget *parent) : TWithOwnFont(parent), m_fontColor(clNavy)
{
    UseMessageBoxes();
}

QVariant TzmCheckEdit::EditValue() const
{
    if (checkState() == Qt::PartiallyChecked)
        return {};
    const auto &text = isChecked() ? m_valueChecked : m_valueUnchecked;
    return text.isEmpty() ? QVariant(isChecked()) : QVariant(text);
}

void TzmCheckEdit::setEditValue(const QVariant &value)
{
    const auto before = checkState();
    const auto text = TextOfValue(value);
    const auto standsFor = [&](const QString &own, bool checked) {
        const auto truth = own.isEmpty() ? TextOfValue(checked) : own;
        const auto word = checked ? u"true" : u"false";
        return value.isValid() &&
               (text == truth || (own.isEmpty() && text.compare(word, Qt::CaseInsensitive) == 0));
    };
    const bool isChecked = standsFor(m_valueChecked, true);
    setTristate(false);
    if (isChecked || standsFor(m_valueUnchecked, false))
        setCheckState(isChecked ? Qt::Checked : Qt::Unchecked);
    else
        setCheckState(Qt::PartiallyChecked);
    if (checkState() != before)
        emit OnEditValueChanged();
}

void TzmCheckEdit::setAlignment(TAlignment alignment)
{
    m_alignment = alignment;
    update();
}

void TzmCheckEdit::setFont_Color(TColor color)
{
    m_fontColor = color;
    update();
}

void TzmCheckEdit::resetFont_Color()
{
    setFont_Color(clNavy);
}

void TzmCheckEdit::setTransparent(bool transparent)
{
    m_transparent = transparent;
    update();
}

void TzmCheckEdit::nextCheckState()
{
    if (m_readOnly)
        return;
    const auto next = checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked;
    setTristate(false);
    setCheckState(next);
    emit OnChange();
    emit OnEditValueChanged();
}

void TzmCheckEdit::initStyleOption(QStyleOptionButton *option) const
{
    QCheckBox::initStyleOption(option);
    const auto ground = palette().color(m_transparent ? backgroundRole() : QPalette::Base);
    const auto group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    if (isEnabled())
        for (const auto each : {QPalette::Active, QPalette::Inactive})
            option->palette.setColor(each, QPalette::WindowText, WithContrast(shownFontColor(), ground));
    option->palette.setCurrentColorGroup(group);
    if (m_alignment == taRightJustify)
        option->direction = layoutDirection() == Qt::LeftToRight ? Qt::RightToLeft : Qt::LeftToRight;
    if (m_alignment == taCenter) {
        const int width = std::min(sizeHint().width(), option->rect.width());
        option->rect = QStyle::alignedRect(layoutDirection(), Qt::AlignCenter,
                                           QSize(width, option->rect.height()), option->rect);
    }
}

void TzmCheckEdit::paintEvent(QPaintEvent *event)
{
    if (!m_transparent)
        QPainter(this).fillRect(rect(), palette().color(QPalette::Base));
    QCheckBox::paintEvent(event);
}

} // namespace Zelmar01
