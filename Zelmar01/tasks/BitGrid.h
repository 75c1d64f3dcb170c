#pragma once

#include <QStringList>
#include <QWidget>

#include <cstdint>
#include <vector>

class QCheckBox;

namespace Zelmar01 {

/// A grid of check boxes for the bits of a mask, such as the months of a year.
class TBitGrid : public QWidget
{
    Q_OBJECT
public:
    /// A box: the bit of the mask that it shows and its caption.
    struct TBox
    {
        int Bit;
        QString Caption;
    };

    /// Boxes run from left to right in rows of `columns`.
    TBitGrid(const QString &name, const QString &label, const std::vector<TBox> &boxes, int columns);

    /// The seven days from Monday on (bit 0 is Sunday), the twelve months, the days 1 to 31.
    static TBitGrid *DaysOfWeek(const QString &name);
    static TBitGrid *Months(const QString &name);
    static TBitGrid *DaysOfMonth(const QString &name);

    void SetMask(std::uint32_t mask);
    std::uint32_t Mask() const;

signals:
    void Changed();

private:
    std::vector<QCheckBox *> m_boxes;
    std::vector<std::uint32_t> m_bits;
};

} // namespace Zelmar01
