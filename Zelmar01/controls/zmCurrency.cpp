#include <Zelmar01/controls/zmCurrency.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/data/binding/AmountText.h>

#include <QValidator>

#include <algorithm>

namespace Zelmar01 {

namespace {

constexpr QChar minusSign = u'−';

/// Lets nothing be typed that no amount begins with.
class TAmountValidator : public QValidator
{
public:
    explicit TAmountValidator(TzmCurrencyEdit *edit) : QValidator(edit), m_edit(*edit) {}

    State validate(QString &input, int &) const override
    {
        const auto locale = m_edit.locale();
        const auto point = locale.decimalPoint(), group = locale.groupSeparator();
        input.replace(minusSign, u'-');
        if (group != u"." && !input.contains(point) && input.count(u'.') == 1)
            input.replace(u'.', point);
        const auto signs = input.startsWith(u'-') || input.startsWith(u'+') ? 1 : 0;
        const auto place = input.indexOf(point);
        const auto whole = place < 0 ? input.mid(signs) : input.mid(signs, place - signs);
        const auto decimals = place < 0 ? QString() : input.mid(place + point.size());
        const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
        const bool isAmount =
            std::all_of(whole.begin(), whole.end(),
                        [&](QChar c) { return isDigit(c) || c.isSpace() || group.contains(c); }) &&
            std::all_of(decimals.begin(), decimals.end(), isDigit) &&
            decimals.size() <= m_edit.DecimalPlaces() && (place < 0 || m_edit.DecimalPlaces() > 0);
        if (!isAmount)
            return Invalid;
        return ParseAmount(input, locale) ? Acceptable : Intermediate;
    }

private:
    const TzmCurrencyEdit &m_edit;
};

} // namespace

TzmCurrencyEdit::TzmCurrencyEdit(QWidget *parent) : TWithOwnFont(parent)
{
    resetAlignment();
    setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    setValidator(new TAmountValidator(this));
    showValue();
}

TDecimal TzmCurrencyEdit::Value() const
{
    return EditValue().value<TDecimal>();
}

void TzmCurrencyEdit::setDecimalPlaces(int places)
{
    m_decimalPlaces = std::clamp(places, 0, TDecimal::MaxDecimals);
}

void TzmCurrencyEdit::setDisplayFormat(const QString &format)
{
    m_displayFormat = format;
    showValue();
}

void TzmCurrencyEdit::setEditFormat(const QString &format)
{
    m_editFormat = format;
    showValue();
}

void TzmCurrencyEdit::setNullstring(const QString &text)
{
    m_nullstring = text;
    showValue();
}

QString TzmCurrencyEdit::textOf(const QVariant &value, bool typing) const
{
    if (value.isValid())
        return FormatAmount(value.value<TDecimal>(), typing ? m_editFormat : m_displayFormat, locale());
    const auto number = TDecimal::FromText(m_nullstring);
    return number ? FormatAmount(*number, QString(), locale()) : m_nullstring;
}

QVariant TzmCurrencyEdit::valueOf(const QString &text) const
{
    if (text.trimmed().isEmpty() || text == m_nullstring)
        return m_nullable ? QVariant() : QVariant::fromValue(TDecimal(0).Rounded(m_decimalPlaces).value());
    const auto amount = ParseAmount(text, locale());
    const auto rounded = amount ? amount->Rounded(m_decimalPlaces) : std::nullopt;
    if (!rounded)
        throw EConvertError(tr("« %1 » n'est pas un montant").arg(text).toStdString());
    return QVariant::fromValue(*rounded);
}

QVariant TzmCurrencyEdit::held(const QVariant &value) const
{
    return ConvertValue(value, ftBCD, QStringLiteral("montant"));
}

// An amount that does not fit into what stands there takes its place.
bool TzmCurrencyEdit::takePasted(const QString &pasted)
{
    const auto amount = ParseAmount(pasted, locale());
    const auto rounded = amount ? amount->Rounded(m_decimalPlaces) : std::nullopt;
    if (!rounded)
        return false;
    auto joined = text();
    const auto place = hasSelectedText() ? selectionStart() : cursorPosition();
    joined.replace(place, selectedText().size(), pasted);
    int cursor = 0;
    if (joined != pasted && validator()->validate(joined, cursor) == QValidator::Acceptable)
        return false;
    selectAll();
    insert(FormatAmount(*rounded, m_editFormat, locale()));
    return true;
}

void TzmCurrencyEdit::keyPressEvent(QKeyEvent *event)
{
    const bool isPoint = event->text() == u"." || event->text() == u",";
    if (isPoint && event->modifiers().testFlag(Qt::KeypadModifier) && !isReadOnly())
        insert(locale().decimalPoint());
    else
        TValueEdit::keyPressEvent(event);
}

} // namespace Zelmar01
