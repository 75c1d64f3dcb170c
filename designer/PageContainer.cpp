#include "PageContainer.h"

#include "NewPageCommand.h"
#include "TabsPad.h"

#include <QAction>
#include <QExtensionFactory>
#include <QUndoStack>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QExtensionManager>

namespace Zelmar01 {

namespace {

class TExtensionFactory : public QExtensionFactory
{
public:
    using QExtensionFactory::QExtensionFactory;

protected:
    QObject *createExtension(QObject *object, const QString &iid, QObject *parent) const override
    {
        if (auto *const control = qobject_cast<TExtPageControl *>(object)) {
            if (iid == Q_TYPEID(QDesignerContainerExtension))
                return new TPageContainer(control, parent);
            if (iid == Q_TYPEID(QDesignerTaskMenuExtension))
                return new TPageMenu(control, parent);
        }
        return nullptr;
    }
};

} // namespace

void RegisterPageExtensions(QDesignerFormEditorInterface *core)
{
    auto *const manager = core->extensionManager();
    auto *const factory = new TExtensionFactory(manager);
    manager->registerExtensions(factory, Q_TYPEID(QDesignerContainerExtension));
    manager->registerExtensions(factory, Q_TYPEID(QDesignerTaskMenuExtension));
}

TPageContainer::TPageContainer(TExtPageControl *control, QObject *parent)
    : QObject(parent), m_control(control)
{
    LayPadOverTabs(control);
}

void TPageContainer::setCurrentIndex(int index)
{
    m_control->SetActivePageIndex(index);
}

void TPageContainer::insertWidget(int index, QWidget *widget)
{
    m_control->InsertPage(index, qobject_cast<TTabSheet *>(widget));
}

void TPageContainer::remove(int index)
{
    m_control->RemovePage(m_control->Pages(index));
}

TPageMenu::TPageMenu(TExtPageControl *control, QObject *parent) : QObject(parent), m_control(control)
{
    const auto add = [this](const QString &text, int distance) {
        auto *const action = new QAction(text, this);
        connect(action, &QAction::triggered, this, [this, distance] { addPage(distance); });
        m_actions.push_back(action);
    };
    add(tr("New Page Before"), 0);
    add(tr("New Page After"), 1);
}

void TPageMenu::addPage(int distance)
{
    auto *const form = QDesignerFormWindowInterface::findFormWindow(m_control);
    if (!form)
        return;
    const int current = m_control->ActivePageIndex();
    const int index = current < 0 ? m_control->PageCount() : current + distance;
    form->commandHistory()->push(new TNewPageCommand(form, m_control, index));
}

} // namespace Zelmar01
