#include "NewPageCommand.h"

#include <QCoreApplication>
#include <QVariant>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerMetaDataBaseInterface>
#include <QtDesigner/QDesignerObjectInspectorInterface>
#include <QtDesigner/QDesignerPropertySheetExtension>
#include <QtDesigner/QDesignerWidgetFactoryInterface>
#include <QtDesigner/QExtensionManager>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

TNewPageCommand::TNewPageCommand(QDesignerFormWindowInterface *form, TExtPageControl *control, int index)
    : QUndoCommand(QCoreApplication::translate("Zelmar01::TPageMenu", "New Page")), m_form(form),
      m_control(control), m_index(index)
{
    const auto className = QString::fromLatin1(TTabSheet::staticMetaObject.className());
    m_page = qobject_cast<TTabSheet *>(form->core()->widgetFactory()->createWidget(className, form));
    if (!m_page)
        return;
    m_page->setObjectName(u"tabSheet"_s);
    form->ensureUniqueObjectName(m_page);
    // Through the sheet, so that the caption is one that was set, and is saved.
    if (auto *const sheet =
            qt_extension<QDesignerPropertySheetExtension *>(form->core()->extensionManager(), m_page)) {
        const int caption = sheet->indexOf(u"Caption"_s);
        sheet->setProperty(caption, u"Page %1"_s.arg(control->PageCount() + 1));
        sheet->setChanged(caption, true);
    }
}

void TNewPageCommand::redo()
{
    if (!m_control || !m_page)
        return;
    m_form->core()->metaDataBase()->add(m_page);
    m_control->InsertPage(m_index, m_page);
    m_control->SetActivePage(m_page);
    showChange();
}

void TNewPageCommand::undo()
{
    if (!m_control || !m_page)
        return;
    m_control->RemovePage(m_page);
    m_page->hide();
    m_page->setParent(m_form);
    m_form->core()->metaDataBase()->remove(m_page);
    showChange();
}

void TNewPageCommand::showChange() const
{
    m_form->clearSelection(false);
    m_form->selectWidget(m_control);
    if (auto *const inspector = m_form->core()->objectInspector())
        inspector->setFormWindow(m_form);
}

} // namespace Zelmar01
