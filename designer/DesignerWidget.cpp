#include "DesignerWidget.h"

#include "PageContainer.h"

#include <Zelmar01/package/ComponentHolder.h>
#include <Zelmar01/tabs/TabSheet.h>

#include <QXmlStreamWriter>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

const QString pageClass = QString::fromLatin1(TTabSheet::staticMetaObject.className());

// The class of Qt that a class of ours stands on.
QString baseOf(const QMetaObject *type)
{
    while (type->superClass() && QByteArrayView(type->className()).startsWith("Zelmar01::"))
        type = type->superClass();
    return QString::fromLatin1(type->className());
}

QString globalInclude(const QString &header)
{
    return u'<' + header + u'>';
}

class TFormText
{
public:
    TFormText() { m_xml.setAutoFormatting(true); }

    void Begin(const QString &element, const QList<QXmlStreamAttribute> &attributes = {})
    {
        m_xml.writeStartElement(element);
        for (const auto &attribute : attributes)
            m_xml.writeAttribute(attribute);
    }
    void End() { m_xml.writeEndElement(); }
    void Element(const QString &element, const QString &text) { m_xml.writeTextElement(element, text); }

    void Geometry(const QSize &size)
    {
        Begin(u"property"_s, {{u"name"_s, u"geometry"_s}});
        Begin(u"rect"_s);
        Element(u"x"_s, u"0"_s);
        Element(u"y"_s, u"0"_s);
        Element(u"width"_s, QString::number(size.width()));
        Element(u"height"_s, QString::number(size.height()));
        End();
        End();
    }

    void String(const QString &property, const QString &value)
    {
        Begin(u"property"_s, {{u"name"_s, property}});
        Element(u"string"_s, value);
        End();
    }

    void Page(int number)
    {
        Begin(u"widget"_s, {{u"class"_s, pageClass}, {u"name"_s, u"tabSheet"_s + QString::number(number)}});
        String(u"Caption"_s, u"Page "_s + QString::number(number));
        End();
    }

    const QString &Text() const { return m_text; }

private:
    QString m_text;
    QXmlStreamWriter m_xml{&m_text};
};

} // namespace

TDesignerWidget::TDesignerWidget(const std::string &page, TComponentClass registered)
    : m_page(QString::fromStdString(page)), m_class(std::move(registered)), m_look(LookOf(m_class.Name))
{
}

QString TDesignerWidget::name() const
{
    return QString::fromLatin1(m_class.FormClass->className());
}

QString TDesignerWidget::includeFile() const
{
    return globalInclude(QString::fromStdString(m_class.Header));
}

QIcon TDesignerWidget::icon() const
{
    const QIcon drawing(u":/zelmar01/designer/%1.svg"_s.arg(QString::fromStdString(m_class.Name)));
    // The palette takes an icon that has no sizes of its own for none at all.
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 44, 64})
        icon.addPixmap(drawing.pixmap(side));
    return icon;
}

QWidget *TDesignerWidget::createWidget(QWidget *parent)
{
    auto *const widget = m_class.Create(parent);
    if (auto *const holder = qobject_cast<TComponentHolder *>(widget))
        holder->SetIcon(icon());
    return widget;
}

QString TDesignerWidget::domXml() const
{
    TFormText form;
    form.Begin(u"ui"_s,
               {{u"language"_s, u"c++"_s}, {u"displayname"_s, QString::fromStdString(m_class.Name)}});
    form.Begin(u"widget"_s, {{u"class"_s, name()}, {u"name"_s, m_look.ObjectName}});
    if (!m_look.Size.isEmpty())
        form.Geometry(m_look.Size);
    if (!m_look.Text.isEmpty())
        form.String(u"text"_s, m_look.Text);
    if (m_look.HasPages) {
        form.Page(1);
        form.Page(2);
    }
    form.End();
    form.Begin(u"customwidgets"_s);
    form.Begin(u"customwidget"_s);
    form.Element(u"class"_s, name());
    form.Element(u"extends"_s, baseOf(m_class.FormClass));
    form.Begin(u"propertyspecifications"_s);
    for (const auto &property : m_look.PlainTexts) {
        form.Begin(u"stringpropertyspecification"_s,
                   {{u"name"_s, property}, {u"type"_s, u"singleline"_s}, {u"notr"_s, u"true"_s}});
        form.End();
    }
    form.End();
    form.End();
    form.End();
    form.End();
    return form.Text();
}

QString TDesignerPage::name() const
{
    return pageClass;
}

QString TDesignerPage::includeFile() const
{
    return globalInclude(u"Zelmar01/tabs/TabSheet.h"_s);
}

QWidget *TDesignerPage::createWidget(QWidget *parent)
{
    return new TTabSheet(parent);
}

void TDesignerPage::initialize(QDesignerFormEditorInterface *core)
{
    if (m_core == core)
        return;
    m_core = core;
    RegisterPageExtensions(core);
}

} // namespace Zelmar01
