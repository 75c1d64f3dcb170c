#pragma once

#include <Zelmar01/core/Colors.h>

#include <QObject>

class QWidget;

namespace Zelmar01 {

/// How the tab under the mouse is shown: by the colour of its caption. clNone leaves a caption as it is.
class TExtHottrack : public QObject
{
    Q_OBJECT
public:
    /// `owner` is the tab control; it is repainted when a setting changes.
    explicit TExtHottrack(QWidget *owner);

    bool Enabled() const { return m_enabled; }
    void setEnabled(bool enabled);

    /// The caption's colour when the tab is the selected one, and when it is not; clHighlight at first.
    TColor TabActiveColor() const { return m_tabActiveColor; }
    void setTabActiveColor(TColor color);
    TColor TabInactiveColor() const { return m_tabInactiveColor; }
    void setTabInactiveColor(TColor color);

    /// The tab under the mouse, -1 for none; the control keeps it.
    int HotTab = -1;

signals:
    void OnChange(QObject *sender);

private:
    template<class Value>
    void set(Value &member, Value value);

    bool m_enabled = false;
    TColor m_tabActiveColor = clHighlight, m_tabInactiveColor = clHighlight;
};

} // namespace Zelmar01
