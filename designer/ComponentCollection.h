#pragma once

#include <Zelmar01/package/Package.h>

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <QObject>

#include <memory>
#include <optional>
#include <vector>

namespace Zelmar01 {

/// The plugin: what the units of the library register, made known to Qt's form designer and to QUiLoader.
class TComponentCollection : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)
public:
    /// Loads the library. When that fails there are no components, and the error goes to the exception
    /// display.
    explicit TComponentCollection(QObject *parent = nullptr);
    ~TComponentCollection() override;

    QList<QDesignerCustomWidgetInterface *> customWidgets() const override;

private:
    std::optional<TPackage> m_package;
    std::vector<std::unique_ptr<QDesignerCustomWidgetInterface>> m_widgets;
};

} // namespace Zelmar01
