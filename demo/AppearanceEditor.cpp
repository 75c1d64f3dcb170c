#include "AppearanceEditor.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QEvent>
#include <QFontDialog>
#include <QFormLayout>
#include <QLineEdit>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QTimer>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace Shop {

namespace {

constexpr int greatestNumber = 0xFFFF;
constexpr int linesShown = 3;

QIcon swatch(const QColor &color)
{
    QPixmap picture(16, 16);
    picture.fill(color.alpha() > 0 ? color : QColor(Qt::transparent));
    return picture;
}

} // namespace

AppearanceEditor::AppearanceEditor(QWidget *parent) : QScrollArea(parent)
{
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAccessibleName(u"Propriétés"_s);
}

void AppearanceEditor::Edit(QObject *object)
{
    m_object = object;
    fill();
}

// Colours of the desktop are shown as they are now.
void AppearanceEditor::changeEvent(QEvent *event)
{
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        QTimer::singleShot(0, this, &AppearanceEditor::fill);
}

void AppearanceEditor::fill()
{
    const int place = verticalScrollBar()->value();
    auto *panel = new QWidget;
    auto *form = new QFormLayout(panel);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setVerticalSpacing(3);
    if (m_object) {
        const auto *meta = m_object->metaObject();
        for (int i = QWidget::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
            const auto property = meta->property(i);
            // The samples stand in layouts, which place them.
            if (QByteArrayView(property.enumerator().scope()).endsWith("TPlacement"))
                continue;
            auto *editor = property.isWritable() ? makeEditor(property) : nullptr;
            if (!editor)
                continue;
            const auto name = QString::fromLatin1(property.name());
            editor->setAccessibleName(name);
            editor->setObjectName(name);
            form->addRow(QString(name).replace(u'_', u'.'), withReset(property, editor));
        }
    }
    setWidget(panel);
    setMinimumWidth(panel->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width());
    verticalScrollBar()->setValue(place);
}

void AppearanceEditor::set(const char *name, const QVariant &value)
{
    if (m_object && m_object->property(name) != value)
        m_object->setProperty(name, value);
}

QWidget *AppearanceEditor::makeEditor(const QMetaProperty &property)
{
    const char *name = property.name();
    const auto value = property.read(m_object);
    if (property.isEnumType()) {
        auto *box = new QComboBox;
        const auto values = property.enumerator();
        for (int i = 0; i < values.keyCount(); ++i)
            box->addItem(QString::fromLatin1(values.key(i)));
        box->setCurrentIndex(value.toInt());
        // The choice may change other properties: the editors are made anew when it is done.
        connect(box, &QComboBox::activated, this, [this, name](int index) {
            set(name, index);
            QTimer::singleShot(0, this, &AppearanceEditor::fill);
        });
        return box;
    }
    switch (property.typeId()) {
    case QMetaType::Bool: {
        auto *box = new QCheckBox;
        box->setChecked(value.toBool());
        connect(box, &QCheckBox::toggled, this, [this, name](bool on) { set(name, on); });
        return box;
    }
    case QMetaType::Int: {
        auto *box = new QSpinBox;
        box->setRange(-1, greatestNumber);
        box->setValue(value.toInt());
        connect(box, &QSpinBox::valueChanged, this, [this, name](int number) { set(name, number); });
        return box;
    }
    case QMetaType::QString: {
        auto *line = new QLineEdit(value.toString());
        connect(line, &QLineEdit::editingFinished, this, [this, name, line] { set(name, line->text()); });
        return line;
    }
    case QMetaType::QStringList: {
        auto *lines = new QPlainTextEdit(value.toStringList().join(u'\n'));
        lines->setTabChangesFocus(true);
        lines->setFixedHeight(lines->fontMetrics().lineSpacing() * linesShown + 12);
        connect(lines, &QPlainTextEdit::textChanged, this, [this, name, lines] {
            const auto text = lines->toPlainText();
            set(name, text.isEmpty() ? QStringList() : text.split(u'\n'));
        });
        return lines;
    }
    case QMetaType::QColor:
        return makeColor(property);
    case QMetaType::QFont:
        return makeFont(property);
    default:
        return nullptr;
    }
}

QWidget *AppearanceEditor::makeColor(const QMetaProperty &property)
{
    auto *button = new QPushButton;
    const char *name = property.name();
    const auto show = [this, button, name] {
        const auto color = m_object->property(name).value<QColor>();
        button->setIcon(swatch(color));
        button->setText(color.alpha() > 0 ? color.name() : u"aucune"_s);
    };
    show();
    connect(button, &QPushButton::clicked, this, [this, name, show] {
        if (!m_object)
            return;
        const auto color = QColorDialog::getColor(m_object->property(name).value<QColor>(), this,
                                                  QString::fromLatin1(name), QColorDialog::ShowAlphaChannel);
        if (!color.isValid() || !m_object)
            return;
        set(name, color);
        show();
    });
    return button;
}

QWidget *AppearanceEditor::makeFont(const QMetaProperty &property)
{
    auto *button = new QPushButton;
    const char *name = property.name();
    const auto show = [this, button, name] {
        const auto font = m_object->property(name).value<QFont>();
        button->setText(u"%1, %2"_s.arg(font.family()).arg(QFontInfo(font).pointSize()));
    };
    show();
    connect(button, &QPushButton::clicked, this, [this, name, show] {
        if (!m_object)
            return;
        bool chosen = false;
        const auto font = QFontDialog::getFont(&chosen, m_object->property(name).value<QFont>(), this);
        if (!chosen || !m_object)
            return;
        set(name, font);
        show();
    });
    return button;
}

QWidget *AppearanceEditor::withReset(const QMetaProperty &property, QWidget *editor)
{
    if (!property.isResettable())
        return editor;
    auto *both = new QWidget;
    auto *layout = new QHBoxLayout(both);
    layout->setContentsMargins({});
    layout->addWidget(editor, 1);
    auto *reset = new QToolButton;
    reset->setText(u"↺"_s);
    reset->setAutoRaise(true);
    reset->setToolTip(u"Valeur par défaut"_s);
    reset->setAccessibleName(u"Valeur par défaut de %1"_s.arg(QString::fromLatin1(property.name())));
    layout->addWidget(reset);
    connect(reset, &QToolButton::clicked, this, [this, property] {
        if (m_object)
            property.reset(m_object);
        QTimer::singleShot(0, this, &AppearanceEditor::fill);
    });
    return both;
}

} // namespace Shop
