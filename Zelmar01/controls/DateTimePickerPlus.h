#pragma once

#include <QDateTimeEdit>

namespace Zelmar01 {

/// A date picker that ignores typing: its date changes with the mouse and the arrow keys only, so that no
/// slip of the keyboard does it. Alt+Down and F4 open its calendar. It begins with today at midnight.
class TDateTimePickerPlus : public QDateTimeEdit
{
    Q_OBJECT
public:
    explicit TDateTimePickerPlus(QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void dropDown();
    void goTo(int neighbour);
};

} // namespace Zelmar01
