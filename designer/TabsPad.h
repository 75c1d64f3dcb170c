#pragma once

#include <Zelmar01/tabs/ExtPageControl.h>

namespace Zelmar01 {

/// Lets the user of the form designer choose a page by its tab. The designer keeps the mouse from the
/// controls on a form, except from child widgets of a certain name; such a one lies over the tabs.
void LayPadOverTabs(TExtPageControl *control);

/// The child widget over the tabs.
class TTabsPad : public QWidget
{
    Q_OBJECT
public:
    explicit TTabsPad(TExtPageControl *control);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void mousePressEvent(QMouseEvent *event) override;

private:
    void cover();

    TExtPageControl *m_control;
    QRegion m_covered;
};

} // namespace Zelmar01
