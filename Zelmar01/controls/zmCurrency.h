#pragma once

#include <Zelmar01/controls/DataAware.h>
#include <Zelmar01/controls/OwnFont.h>
#include <Zelmar01/controls/ValueEdit.h>
#include <Zelmar01/data/Decimal.h>

namespace Zelmar01 {

/// An editor of an amount of money: right-aligned, with two decimals and a separator between thousands, in
/// the form of its locale. Amounts are exact decimals and never pass through a binary fraction.
///
/// While the user is in it the amount is shown without separators between thousands. "." is taken for the
/// decimal separator where it does not separate thousands; the decimal key of the keypad always is it.
/// Amounts in the forms that ParseAmount() reads can be pasted; more decimals than DecimalPlaces are rounded
/// off.
class TzmCurrencyEdit : public TWithOwnFont<TValueEdit>
{
    Q_OBJECT
    Q_PROPERTY(int DecimalPlaces READ DecimalPlaces WRITE setDecimalPlaces RESET resetDecimalPlaces)
    Q_PROPERTY(QString DisplayFormat READ DisplayFormat WRITE setDisplayFormat RESET resetDisplayFormat)
    Q_PROPERTY(QString EditFormat READ EditFormat WRITE setEditFormat RESET resetEditFormat)
    Q_PROPERTY(bool Nullable READ Nullable WRITE setNullable RESET resetNullable)
    Q_PROPERTY(QString Nullstring READ Nullstring WRITE setNullstring RESET resetNullstring)
    Q_PROPERTY(Qt::Alignment alignment READ alignment WRITE setAlignment RESET resetAlignment)
    Q_PROPERTY(bool ParentFont READ ParentFont WRITE setParentFont RESET resetParentFont)
public:
    explicit TzmCurrencyEdit(QWidget *parent = nullptr);

    /// The amount; 0 for null. Raises EConvertError when what the user has typed is none.
    TDecimal Value() const;
    void setValue(const TDecimal &value) { setEditValue(QVariant::fromValue(value)); }

    /// How many decimals can be typed, 0 to 18.
    int DecimalPlaces() const { return m_decimalPlaces; }
    void setDecimalPlaces(int places);
    /// The formats for reading and for typing, as FormatAmount() describes.
    QString DisplayFormat() const { return m_displayFormat; }
    void setDisplayFormat(const QString &format);
    QString EditFormat() const { return m_editFormat; }
    void setEditFormat(const QString &format);
    /// Whether an emptied editor means null; else it means 0.
    bool Nullable() const { return m_nullable; }
    void setNullable(bool nullable) { m_nullable = nullable; }
    /// What is shown for null. A number (with "." for its decimals) is shown in the form of the locale.
    QString Nullstring() const { return m_nullstring; }
    void setNullstring(const QString &text);

protected:
    QString textOf(const QVariant &value, bool typing) const override;
    QVariant valueOf(const QString &text) const override;
    QVariant held(const QVariant &value) const override;
    bool takePasted(const QString &text) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void resetDecimalPlaces() { setDecimalPlaces(presetPlaces); }
    void resetDisplayFormat() { setDisplayFormat(presetDisplayFormat()); }
    void resetEditFormat() { setEditFormat(presetEditFormat()); }
    void resetNullable() { setNullable(false); }
    void resetNullstring() { setNullstring(presetNullstring()); }
    void resetAlignment() { setAlignment(Qt::AlignRight | Qt::AlignVCenter); }

    static constexpr int presetPlaces = 2;
    static QString presetDisplayFormat() { return QStringLiteral(",0.00;-,0.00"); }
    static QString presetEditFormat() { return QStringLiteral("0.00"); }
    static QString presetNullstring() { return QStringLiteral("0.00"); }

    int m_decimalPlaces = presetPlaces;
    QString m_displayFormat = presetDisplayFormat(), m_editFormat = presetEditFormat();
    bool m_nullable = false;
    QString m_nullstring = presetNullstring();
};

/// The editor of an amount on a field.
class TzmDBCurrencyEdit : public TDataAware<TzmCurrencyEdit>
{
    Q_OBJECT
    Q_PROPERTY(QString DataField READ DataField WRITE setDataField)
    Q_PROPERTY(bool ReadOnly READ ReadOnly WRITE setReadOnly)
public:
    explicit TzmDBCurrencyEdit(QWidget *parent = nullptr) : TDataAware(parent) {}
};

} // namespace Zelmar01
