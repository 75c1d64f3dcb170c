#pragma once

#include <QWidget>

namespace Zelmar01 {

/// Tells when the user leaves a control: when the focus goes from it, or from a widget inside it, to another
/// widget of the same window. Its own popup, a menu and another window are no leaving; when the focus comes
/// back from them to another widget of the window, the control has been left.
class TLeaveWatch : public QObject
{
    Q_OBJECT
public:
    /// `control` owns the watch.
    explicit TLeaveWatch(QWidget *control);

signals:
    void OnLeave();

private:
    void follow();
    const QWidget *control() const { return static_cast<const QWidget *>(parent()); }

    bool m_inside = false;
};

} // namespace Zelmar01
