#include <Zelmar01/tasks/BitGrid.h>

#include <QCheckBox>
#include <QGridLayout>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

TBitGrid::TBitGrid(const QString &name, const QString &label, const std::vector<TBox> &boxes, int columns)
{
    setObjectName(name);
    setAccessibleName(label);
    auto *layout = new QGridLayout(this);
    layout->setContentsMargins({});
    layout->setVerticalSpacing(2);
    for (const auto &box : boxes) {
        auto *check = new QCheckBox(box.Caption);
        check->setObjectName(name + QString::number(box.Bit));
        check->setAccessibleName(label + u" : "_s + box.Caption);
        connect(check, &QCheckBox::toggled, this, &TBitGrid::Changed);
        const int place = static_cast<int>(m_boxes.size());
        layout->addWidget(check, place / columns, place % columns);
        m_boxes.push_back(check);
        m_bits.push_back(1U << box.Bit);
    }
    setFocusProxy(m_boxes.front());
}

TBitGrid *TBitGrid::DaysOfWeek(const QString &name)
{
    constexpr int week = 7;
    std::vector<TBox> boxes;
    for (int day = 1; day <= week; ++day)
        boxes.push_back({day % week, QLocale(tr("fr_FR")).dayName(day, QLocale::ShortFormat)});
    return new TBitGrid(name, tr("Jours de la semaine"), boxes, week);
}

TBitGrid *TBitGrid::Months(const QString &name)
{
    std::vector<TBox> boxes;
    for (int month = 1; month <= 12; ++month)
        boxes.push_back({month - 1, QLocale(tr("fr_FR")).monthName(month, QLocale::ShortFormat)});
    return new TBitGrid(name, tr("Mois"), boxes, 6);
}

TBitGrid *TBitGrid::DaysOfMonth(const QString &name)
{
    std::vector<TBox> boxes;
    for (int day = 1; day <= 31; ++day)
        boxes.push_back({day - 1, QString::number(day)});
    return new TBitGrid(name, tr("Jours du mois"), boxes, 8);
}

void TBitGrid::SetMask(std::uint32_t mask)
{
    for (std::size_t i = 0; i < m_boxes.size(); ++i)
        m_boxes[i]->setChecked((mask & m_bits[i]) != 0);
}

std::uint32_t TBitGrid::Mask() const
{
    std::uint32_t mask = 0;
    for (std::size_t i = 0; i < m_boxes.size(); ++i)
        mask |= m_boxes[i]->isChecked() ? m_bits[i] : 0;
    return mask;
}

} // namespace Zelmar01
