#include <Zelmar01/tabs/ExtHottrack.h>

#include <QWidget>

namespace Zelmar01 {

TExtHottrack::TExtHottrack(QWidget *owner) : QObject(owner) {}

template<class Value>
void TExtHottrack::set(Value &member, Value value)
{
    if (member == value)
        return;
    member = value;
    emit OnChange(this);
}

void TExtHottrack::setEnabled(bool enabled)
{
    set(m_enabled, enabled);
}

void TExtHottrack::setTabActiveColor(TColor color)
{
    set(m_tabActiveColor, color);
}

void TExtHottrack::setTabInactiveColor(TColor color)
{
    set(m_tabInactiveColor, color);
}

} // namespace Zelmar01
