#pragma once

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerPropertySheetExtension>
#include <QtDesigner/QDesignerWidgetBoxInterface>

#include <QObject>
#include <QWidget>

#include <memory>

/// Qt Designer without its main window: the parts that it puts together, with the plugins of this build.
class FormEditor
{
public:
    FormEditor();

    QDesignerFormEditorInterface *Core() const { return m_core; }
    /// The widgets of a page of the palette.
    QDesignerWidgetBoxInterface::WidgetList Palette(const QString &page) const;

    /// A form window with the form of a text; the editor owns it. Pictures are looked for beside its file.
    QDesignerFormWindowInterface *Open(const QString &form, const QString &file = {}) const;
    /// What can be edited of an object on a form.
    QDesignerPropertySheetExtension *Sheet(QObject *object) const;
    /// Gives a property another value, as the property editor does. False when there is none to edit.
    bool Edit(QDesignerFormWindowInterface *form, QWidget *widget, const QString &property,
              const QVariant &value) const;

private:
    // The parts go before what holds them together.
    QObject m_owner;
    QDesignerFormEditorInterface *m_core;
    std::unique_ptr<QWidget> m_parts = std::make_unique<QWidget>();
};
