#pragma once

#include <Zelmar01/tabs/ExtPageControl.h>

#include <QPointer>
#include <QUndoCommand>

class QDesignerFormWindowInterface;

namespace Zelmar01 {

/// Adds a page to a page control on a form that is being designed, and takes it out again.
class TNewPageCommand : public QUndoCommand
{
public:
    TNewPageCommand(QDesignerFormWindowInterface *form, TExtPageControl *control, int index);

    void redo() override;
    void undo() override;

private:
    void showChange() const;

    QDesignerFormWindowInterface *m_form;
    QPointer<TExtPageControl> m_control;
    QPointer<TTabSheet> m_page; // of the control, or of the form while it is taken out
    int m_index;
};

} // namespace Zelmar01
