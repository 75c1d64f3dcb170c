#include <Zelmar01/tasks/MinutesField.h>

#include <QComboBox>
#include <QHBoxLayout>
#include <QSpinBox>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

constexpr std::uint32_t minutesAnHour = 60;
constexpr std::uint32_t minutesADay = 24 * minutesAnHour;
constexpr int largestNumber = 99'999;

} // namespace

TMinutesField::TMinutesField(const QString &name, const QString &label)
    : m_number(new QSpinBox), m_unit(new QComboBox)
{
    setObjectName(name);
    m_number->setObjectName(name + u"Number"_s);
    m_number->setRange(1, largestNumber);
    m_number->setAccessibleName(label);
    m_unit->setObjectName(name + u"Unit"_s);
    m_unit->setAccessibleName(tr("%1 : unité").arg(label));
    m_unit->addItem(tr("minutes"), 1);
    m_unit->addItem(tr("heures"), minutesAnHour);
    m_unit->addItem(tr("jours"), minutesADay);
    setFocusProxy(m_number);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_number);
    layout->addWidget(m_unit);
    connect(m_number, &QSpinBox::valueChanged, this, &TMinutesField::Changed);
    connect(m_unit, &QComboBox::currentIndexChanged, this, &TMinutesField::Changed);
}

void TMinutesField::SetMinutes(std::uint32_t minutes)
{
    int index = 0;
    for (int i = 0; i < m_unit->count(); ++i)
        if (minutes > 0 && minutes % m_unit->itemData(i).toUInt() == 0)
            index = i;
    m_unit->setCurrentIndex(index);
    const auto number = minutes / m_unit->itemData(index).toUInt();
    m_number->setValue(static_cast<int>(std::min<std::uint32_t>(number, largestNumber)));
}

std::uint32_t TMinutesField::Minutes() const
{
    return static_cast<std::uint32_t>(m_number->value()) * m_unit->currentData().toUInt();
}

} // namespace Zelmar01
