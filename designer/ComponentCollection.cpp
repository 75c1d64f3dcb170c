#include "ComponentCollection.h"

#include "DesignerWidget.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/package/Units.h>

#include <QScopeGuard>

namespace Zelmar01 {

TComponentCollection::TComponentCollection(QObject *parent) : QObject(parent)
{
    ShowingExceptions([this] {
        m_package.emplace();
        auto before = SetComponentRegistrar([this](const auto &page, const auto &classes) {
            for (const auto &registered : classes)
                m_widgets.push_back(std::make_unique<TDesignerWidget>(page, registered));
        });
        const auto restore = qScopeGuard([&] { SetComponentRegistrar(std::move(before)); });
        RegisterAllUnits();
        m_widgets.push_back(std::make_unique<TDesignerPage>());
    });
}

TComponentCollection::~TComponentCollection() = default;

QList<QDesignerCustomWidgetInterface *> TComponentCollection::customWidgets() const
{
    QList<QDesignerCustomWidgetInterface *> widgets;
    for (const auto &widget : m_widgets)
        widgets.push_back(widget.get());
    return widgets;
}

} // namespace Zelmar01
