#pragma once

#include "DesignerLooks.h"

#include <Zelmar01/package/RegisterComponents.h>

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <QPointer>

namespace Zelmar01 {

/// A registered class as the form designer knows it.
class TDesignerWidget : public QDesignerCustomWidgetInterface
{
public:
    TDesignerWidget(const std::string &page, TComponentClass registered);

    QString name() const override;
    QString group() const override { return m_page; }
    QString toolTip() const override { return m_look.ToolTip; }
    QString whatsThis() const override { return m_look.ToolTip; }
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override { return m_look.HasPages || m_look.TakesOthers; }
    QWidget *createWidget(QWidget *parent) override;
    QString domXml() const override;

private:
    QString m_page;
    TComponentClass m_class;
    TDesignerLook m_look;
};

/// The pages of a page control: forms make them, and the palette does not offer them.
class TDesignerPage : public QDesignerCustomWidgetInterface
{
public:
    QString name() const override;
    QString group() const override { return m_group; }
    QString toolTip() const override { return {}; }
    QString whatsThis() const override { return {}; }
    QString includeFile() const override;
    QIcon icon() const override { return {}; }
    bool isContainer() const override { return true; }
    QWidget *createWidget(QWidget *parent) override;
    QString domXml() const override { return {}; }
    bool isInitialized() const override { return !m_core.isNull(); }
    /// Teaches the form designer about pages.
    void initialize(QDesignerFormEditorInterface *core) override;

private:
    QPointer<QDesignerFormEditorInterface> m_core;
    QString m_group = QStringLiteral("Zelmar01");
};

} // namespace Zelmar01
