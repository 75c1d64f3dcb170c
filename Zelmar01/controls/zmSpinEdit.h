#pragma once

#include <Zelmar01/controls/DataAware.h>
#include <Zelmar01/controls/OwnFont.h>
#include <Zelmar01/data/Decimal.h>

#include <QAbstractSpinBox>
#include <QVariant>

#include <optional>

namespace Zelmar01 {

class TLeaveCheck;

/// An editor of a number with arrows that step it up and down. Numbers are exact decimals in the form of the
/// locale; an empty editor is null.
class TzmSpinEdit : public TWithOwnFont<QAbstractSpinBox>
{
    Q_OBJECT
    Q_PROPERTY(qlonglong MinValue READ MinValue WRITE setMinValue)
    Q_PROPERTY(qlonglong MaxValue READ MaxValue WRITE setMaxValue)
    Q_PROPERTY(qlonglong Increment READ Increment WRITE setIncrement)
    Q_PROPERTY(bool ParentFont READ ParentFont WRITE setParentFont RESET resetParentFont)
    Q_PROPERTY(bool ReadOnly READ isReadOnly WRITE setReadOnly)
    Q_PROPERTY(bool readOnly READ isReadOnly WRITE setReadOnly DESIGNABLE false STORED false)
    // What assistive technology asks of a spin box.
    Q_PROPERTY(QVariant value READ valueTold WRITE setValueTold DESIGNABLE false STORED false)
    Q_PROPERTY(qlonglong minimum READ MinValue DESIGNABLE false STORED false)
    Q_PROPERTY(qlonglong maximum READ MaxValue DESIGNABLE false STORED false)
    Q_PROPERTY(qlonglong stepSize READ Increment DESIGNABLE false STORED false)
    Q_PROPERTY(QVariant EditValue READ EditValue WRITE setEditValue NOTIFY OnEditValueChanged
                   USER true DESIGNABLE false STORED false)
public:
    explicit TzmSpinEdit(QWidget *parent = nullptr);

    /// The number; invalid for null. Raises EConvertError when what the user has typed is none, or lies
    /// outside the limits.
    QVariant EditValue() const;
    void setEditValue(const QVariant &value);

    /// The limits of what is typed and stepped; none while both are 0.
    qlonglong MinValue() const { return m_min; }
    void setMinValue(qlonglong value) { m_min = value; }
    qlonglong MaxValue() const { return m_max; }
    void setMaxValue(qlonglong value) { m_max = value; }
    qlonglong Increment() const { return m_increment; }
    void setIncrement(qlonglong increment) { m_increment = increment; }

    void stepBy(int steps) override;
    QValidator::State validate(QString &text, int &cursor) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    /// The user has changed the number.
    void OnChange();
    /// There is a new number: the user has finished, or a host has set it.
    void OnEditValueChanged();

protected:
    /// The number is bound to a field: the binding looks after what is typed when the user leaves.
    void leaveToBinding();
    StepEnabled stepEnabled() const override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    std::optional<TDecimal> shown() const;
    bool isWithin(const TDecimal &number) const;
    QVariant valueTold() const;
    void setValueTold(const QVariant &value);
    void showValue();
    void finish();

    TLeaveCheck *m_leave;
    QVariant m_value;
    bool m_typed = false;
    qlonglong m_min = 0, m_max = 0, m_increment = 1;
};

/// The editor of a number with arrows on a field.
class TzmDBSpinEdit : public TDataAware<TzmSpinEdit>
{
    Q_OBJECT
    Q_PROPERTY(QString DataField READ DataField WRITE setDataField)
    Q_PROPERTY(bool ReadOnly READ ReadOnly WRITE setReadOnly)
public:
    explicit TzmDBSpinEdit(QWidget *parent = nullptr) : TDataAware(parent) {}
};

} // namespace Zelmar01
