#include <Zelmar01/core/Pages.h>

#include <QStackedWidget>
#include <QTabWidget>

namespace Zelmar01 {

namespace {

void showPage(QWidget &page, QWidget &holder)
{
    if (auto *pages = dynamic_cast<IPages *>(&holder))
        return pages->ShowPage(page);
    auto *stack = qobject_cast<QStackedWidget *>(&holder);
    if (!stack || stack->currentWidget() == &page)
        return;
    if (auto *tabs = qobject_cast<QTabWidget *>(stack->parentWidget()))
        tabs->setCurrentWidget(&page);
    else
        stack->setCurrentWidget(&page);
}

} // namespace

void ShowPagesOf(QWidget &widget)
{
    for (auto *page = &widget; !page->isWindow() && page->parentWidget(); page = page->parentWidget())
        showPage(*page, *page->parentWidget());
}

} // namespace Zelmar01
