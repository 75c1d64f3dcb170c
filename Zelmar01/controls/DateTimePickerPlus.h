#pragma once

#include <QDateTimeEdit>

namespace Zelmar01 {

/// A date picker that ignores typing: its date changes with the mouse and the arrow keys only, so that no
/// slip of the keyboard does. It begins with today at midnight.
class TDateTimePickerPlus : public QDateTimeEdit
{
    Q_OBJECT
public:
    explicit TDateTimePickerPlus(QWidget *parent = nullptr);

protected:
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
};

} // namespace Zelmar01
