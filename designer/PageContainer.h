#pragma once

#include <Zelmar01/tabs/ExtPageControl.h>

#include <QtDesigner/QDesignerContainerExtension>
#include <QtDesigner/QDesignerTaskMenuExtension>

class QAction;
class QDesignerFormEditorInterface;

namespace Zelmar01 {

/// Tells the form designer how to work with the pages of page controls and with their tabs.
void RegisterPageExtensions(QDesignerFormEditorInterface *core);

/// The pages of a page control, for the form designer.
class TPageContainer : public QObject, public QDesignerContainerExtension
{
    Q_OBJECT
    Q_INTERFACES(QDesignerContainerExtension)
public:
    TPageContainer(TExtPageControl *control, QObject *parent);

    int count() const override { return m_control->PageCount(); }
    QWidget *widget(int index) const override { return m_control->Pages(index); }
    int currentIndex() const override { return m_control->ActivePageIndex(); }
    void setCurrentIndex(int index) override;
    /// Not pages of the designer's own making, which are plain widgets; see TPageMenu.
    bool canAddWidget() const override { return false; }
    void addWidget(QWidget *widget) override { insertWidget(count(), widget); }
    void insertWidget(int index, QWidget *widget) override;
    bool canRemove(int index) const override { return m_control->Pages(index) != nullptr; }
    void remove(int index) override;

private:
    TExtPageControl *m_control;
};

/// The entries in the context menu of a page control that add pages of the right class.
class TPageMenu : public QObject, public QDesignerTaskMenuExtension
{
    Q_OBJECT
    Q_INTERFACES(QDesignerTaskMenuExtension)
public:
    TPageMenu(TExtPageControl *control, QObject *parent);

    QList<QAction *> taskActions() const override { return m_actions; }

private:
    void addPage(int distance);

    TExtPageControl *m_control;
    QList<QAction *> m_actions;
};

} // namespace Zelmar01
