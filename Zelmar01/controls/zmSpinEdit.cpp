#include <Zelmar01/controls/zmSpinEdit.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/WidgetBoxes.h>
#include <Zelmar01/data/Field.h>
#include <Zelmar01/data/binding/AmountText.h>
#include <Zelmar01/data/binding/LeaveCheck.h>

#include <QKeyEvent>
#include <QLineEdit>
#include <QStyleOptionSpinBox>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace Zelmar01 {

namespace {

constexpr int usualDigits = 8;

// The number a whole number higher; none when it has too many digits.
std::optional<TDecimal> sum(const TDecimal &number, qint64 whole)
{
    const auto scaled = TDecimal(whole).Rounded(number.Decimals());
    if (!scaled)
        return std::nullopt;
    return TDecimal(number.Unscaled() + scaled->Unscaled(), number.Decimals()).Rounded(number.Decimals());
}

} // namespace

TzmSpinEdit::TzmSpinEdit(QWidget *parent) : TWithOwnFont(parent)
{
    UseMessageBoxes();
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
    setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    m_leave = new TLeaveCheck(
        this, [this] { finish(); }, [this] { return m_typed; });
    connect(lineEdit(), &QLineEdit::textEdited, this, [this] {
        m_typed = true;
        emit OnChange();
    });
}

QVariant TzmSpinEdit::EditValue() const
{
    if (!m_typed)
        return m_value;
    const auto text = lineEdit()->text();
    if (text.trimmed().isEmpty())
        return {};
    const auto number = ParseAmount(text, locale());
    if (!number)
        throw EConvertError(tr("« %1 » n'est pas un nombre").arg(text).toStdString());
    if (!isWithin(*number))
        throw EConvertError(tr("« %1 » n'est pas entre %2 et %3")
                                .arg(text, QString::number(m_min), QString::number(m_max))
                                .toStdString());
    return QVariant::fromValue(*number);
}

void TzmSpinEdit::setEditValue(const QVariant &value)
{
    const auto before = std::exchange(m_value, ConvertValue(value, ftBCD, QStringLiteral("nombre")));
    m_typed = false;
    showValue();
    if (m_value != before)
        emit OnEditValueChanged();
}

std::optional<TDecimal> TzmSpinEdit::shown() const
{
    return ParseAmount(lineEdit()->text(), locale());
}

QVariant TzmSpinEdit::valueTold() const
{
    const auto number = shown();
    return number ? QVariant(number->ToDouble()) : QVariant();
}

// As if the user had typed it.
void TzmSpinEdit::setValueTold(const QVariant &value)
{
    const auto number = TDecimal::FromFraction(value.toDouble(), 0);
    if (isReadOnly() || !number || !isWithin(*number))
        return;
    lineEdit()->setText(FormatAmount(*number, QString(), locale()));
    m_typed = true;
    emit OnChange();
}

bool TzmSpinEdit::isWithin(const TDecimal &number) const
{
    return (m_min == 0 && m_max == 0) || (number >= TDecimal(m_min) && number <= TDecimal(m_max));
}

void TzmSpinEdit::showValue()
{
    const auto text =
        m_value.isValid() ? FormatAmount(m_value.value<TDecimal>(), QString(), locale()) : QString();
    if (text != lineEdit()->text())
        lineEdit()->setText(text);
}

void TzmSpinEdit::stepBy(int steps)
{
    if (isReadOnly())
        return;
    auto number = sum(shown().value_or(TDecimal()), steps * m_increment);
    if (!number)
        return;
    if (!isWithin(*number))
        number = *number < TDecimal(m_min) ? TDecimal(m_min) : TDecimal(m_max);
    if (number == shown())
        return;
    lineEdit()->setText(FormatAmount(*number, QString(), locale()));
    lineEdit()->selectAll();
    m_typed = true;
    emit OnChange();
}

QAbstractSpinBox::StepEnabled TzmSpinEdit::stepEnabled() const
{
    if (isReadOnly())
        return StepNone;
    const auto number = shown().value_or(TDecimal());
    const bool isFree = m_min == 0 && m_max == 0;
    StepEnabled steps = StepNone;
    steps.setFlag(StepUpEnabled, isFree || number < TDecimal(m_max));
    steps.setFlag(StepDownEnabled, isFree || number > TDecimal(m_min));
    return steps;
}

QValidator::State TzmSpinEdit::validate(QString &text, int &) const
{
    const auto point = locale().decimalPoint(), group = locale().groupSeparator();
    if (group != u"." && !text.contains(point) && text.count(u'.') == 1)
        text.replace(u'.', point);
    const bool isNumber = std::all_of(text.begin(), text.end(), [&](QChar c) {
        return (c >= u'0' && c <= u'9') || c.isSpace() || u'-' == c || point.contains(c) || group.contains(c);
    });
    if (!isNumber || text.lastIndexOf(u'-') > 0)
        return QValidator::Invalid;
    return text.isEmpty() || ParseAmount(text, locale()) ? QValidator::Acceptable : QValidator::Intermediate;
}

void TzmSpinEdit::finish()
{
    if (m_typed)
        setEditValue(EditValue());
}

void TzmSpinEdit::leaveToBinding()
{
    delete std::exchange(m_leave, nullptr);
}

void TzmSpinEdit::changeEvent(QEvent *event)
{
    QAbstractSpinBox::changeEvent(event);
    if (event->type() == QEvent::LocaleChange && !m_typed)
        showValue();
}

void TzmSpinEdit::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape && std::exchange(m_typed, false)) {
        showValue();
        lineEdit()->selectAll();
        return;
    }
    bool isDone = !isEnter;
    if (isEnter) // a refused number must not reach the default button of a dialog
        ShowingExceptions([&] {
            finish();
            isDone = true;
        });
    if (isDone)
        QAbstractSpinBox::keyPressEvent(event);
}

// A wheel that scrolls the form must not change the number.
void TzmSpinEdit::wheelEvent(QWheelEvent *event)
{
    if (hasFocus())
        QAbstractSpinBox::wheelEvent(event);
    else
        event->ignore();
}

// Room for the usual quantities.
QSize TzmSpinEdit::sizeHint() const
{
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    const QSize inner(fontMetrics().horizontalAdvance(QString(usualDigits, u'0')),
                      lineEdit()->sizeHint().height());
    return style()->sizeFromContents(QStyle::CT_SpinBox, &option, inner, this);
}

} // namespace Zelmar01
