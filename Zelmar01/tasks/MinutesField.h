#pragma once

#include <QWidget>

#include <cstdint>

class QComboBox;
class QSpinBox;

namespace Zelmar01 {

/// A field for a length of time in minutes, which the user may write in minutes, hours or days.
class TMinutesField : public QWidget
{
    Q_OBJECT
public:
    /// `name` is the object name and `label` what is read out to those who do not see the field.
    TMinutesField(const QString &name, const QString &label);

    /// Shown in the largest unit that goes without a rest.
    void SetMinutes(std::uint32_t minutes);
    std::uint32_t Minutes() const;

    QSpinBox *Number() const { return m_number; }

signals:
    void Changed();

private:
    QSpinBox *m_number;
    QComboBox *m_unit;
};

} // namespace Zelmar01
