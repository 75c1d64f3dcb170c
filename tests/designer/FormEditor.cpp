#include <designer/FormEditor.h>

#include <QtDesigner/QDesignerComponents>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerIntegration>
#include <QtDesigner/QExtensionManager>

#include <QCoreApplication>

// For the leak sanitizer: the designer forgets layout items of forms that it has opened.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:QLayoutPrivate::createWidgetItem\nleak:libQt6DesignerComponents.so\nleak:libQt6Designer.so";
}

namespace {

QDesignerFormEditorInterface *newEditor(QObject *owner)
{
    QCoreApplication::addLibraryPath(QStringLiteral(PLUGINS));
    QDesignerComponents::initializeResources();
    return QDesignerComponents::createFormEditor(owner);
}

} // namespace

FormEditor::FormEditor() : m_core(newEditor(&m_owner))
{
    auto *const parts = m_parts.get();
    m_core->setTopLevel(parts);
    // Its palette makes one of each widget, and the offscreen platform warns about one of them.
    const auto handler =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    m_core->setWidgetBox(QDesignerComponents::createWidgetBox(m_core, parts));
    m_core->setPropertyEditor(QDesignerComponents::createPropertyEditor(m_core, parts));
    m_core->setObjectInspector(QDesignerComponents::createObjectInspector(m_core, parts));
    m_core->setActionEditor(QDesignerComponents::createActionEditor(m_core, parts));
    QDesignerComponents::initializePlugins(m_core);
    QDesignerComponents::createTaskMenu(m_core, parts);
    m_core->setIntegration(new QDesignerIntegration(m_core, &m_owner));
    m_core->widgetBox()->setFileName(QStringLiteral(":/qt-project.org/widgetbox/widgetbox.xml"));
    m_core->widgetBox()->load();
    qInstallMessageHandler(handler);
}

QDesignerWidgetBoxInterface::WidgetList FormEditor::Palette(const QString &page) const
{
    const auto *const box = m_core->widgetBox();
    QDesignerWidgetBoxInterface::WidgetList widgets;
    for (int category = 0; category < box->categoryCount(); ++category) {
        const auto found = box->category(category);
        for (int widget = 0; found.name() == page && widget < found.widgetCount(); ++widget)
            widgets.push_back(found.widget(widget));
    }
    return widgets;
}

QDesignerFormWindowInterface *FormEditor::Open(const QString &form, const QString &file) const
{
    auto *const window = m_core->formWindowManager()->createFormWindow(m_parts.get());
    window->setFileName(file);
    if (!window->setContents(form))
        return nullptr;
    m_core->formWindowManager()->setActiveFormWindow(window);
    return window;
}

QDesignerPropertySheetExtension *FormEditor::Sheet(QObject *object) const
{
    return qt_extension<QDesignerPropertySheetExtension *>(m_core->extensionManager(), object);
}

bool FormEditor::Edit(QDesignerFormWindowInterface *form, QWidget *widget, const QString &property,
                      const QVariant &value) const
{
    auto *const sheet = Sheet(widget);
    const int index = sheet ? sheet->indexOf(property) : -1;
    if (index < 0 || !sheet->isVisible(index) || !sheet->isEnabled(index))
        return false;
    form->cursor()->setWidgetProperty(widget, property, value);
    return true;
}
