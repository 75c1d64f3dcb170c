#include "AppearanceEditor.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QEvent>
#include <QFileDialog>
#include <QFontDialog>
#include <QFormLayout>
#include <QLineEdit>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QPainter>
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

QIcon swatch(const QColor &color, const QColor &frame)
{
    QPixmap picture(16, 16);
    picture.fill(color);
    QPainter painter(&picture);
    painter.setPen(frame);
    painter.drawRect(0, 0, 15, 15);
    return picture;
}

} // namespace

AppearanceEditor::AppearanceEditor(QWidget *parent) : QScrollArea(parent)
{
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAccessibleName(u"Propriétés"_s);
}

void AppearanceEditor::Edit(QObject *object, const QStringList &more)
{
    m_object = object;
    m_readers.clear();
    auto *panel = new QWidget;
    auto *form = new QFormLayout(panel);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->setVerticalSpacing(3);
    const auto *meta = object ? object->metaObject() : &QObject::staticMetaObject;
    for (int i = 0; i < meta->propertyCount(); ++i) {
        const auto property = meta->property(i);
        const auto name = QString::fromLatin1(property.name());
        // The samples stand in layouts, which place them.
        if (!property.isWritable() ||
            (i < QWidget::staticMetaObject.propertyCount() && !more.contains(name)) ||
            QByteArrayView(property.enumerator().scope()).endsWith("TPlacement"))
            continue;
        if (auto *editor = makeEditor(property)) {
            editor->setAccessibleName(name);
            editor->setObjectName(name);
            form->addRow(QString(name).replace(u'_', u'.'), withReset(property, editor));
        }
    }
    Read();
    setWidget(panel);
    // What is beside it stays where it is.
    const int wanted = panel->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width();
    setMinimumWidth(qMax(minimumWidth(), wanted));
}

void AppearanceEditor::Read()
{
    if (!m_object)
        return;
    for (const auto &reader : m_readers)
        reader();
}

void AppearanceEditor::showsBy(std::function<void()> reader)
{
    m_readers.push_back(std::move(reader));
}

// Colours of the desktop are shown as they are now.
void AppearanceEditor::changeEvent(QEvent *event)
{
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        QTimer::singleShot(0, this, &AppearanceEditor::Read);
}

QVariant AppearanceEditor::value(const char *name) const
{
    return m_object ? m_object->property(name) : QVariant();
}

void AppearanceEditor::set(const char *name, const QVariant &value)
{
    if (!m_object || m_object->property(name) == value)
        return;
    m_object->setProperty(name, value);
    Read();
}

QWidget *AppearanceEditor::makeEditor(const QMetaProperty &property)
{
    const char *name = property.name();
    if (property.isEnumType())
        return makeChoice(property);
    switch (property.typeId()) {
    case QMetaType::Bool: {
        auto *box = new QCheckBox;
        showsBy([this, name, box] { box->setChecked(value(name).toBool()); });
        connect(box, &QCheckBox::clicked, this, [this, name](bool on) { set(name, on); });
        return box;
    }
    case QMetaType::Int: {
        auto *box = new QSpinBox;
        box->setRange(-1, greatestNumber);
        showsBy([this, name, box] { box->setValue(value(name).toInt()); });
        connect(box, &QSpinBox::valueChanged, this, [this, name](int number) { set(name, number); });
        return box;
    }
    case QMetaType::QString: {
        auto *line = new QLineEdit;
        showsBy([this, name, line] { line->setText(value(name).toString()); });
        connect(line, &QLineEdit::editingFinished, this, [this, name, line] { set(name, line->text()); });
        return line;
    }
    case QMetaType::QStringList:
        return makeLines(name);
    case QMetaType::QColor:
        return makeColor(name);
    case QMetaType::QFont:
        return makeFont(name);
    case QMetaType::QPixmap:
        return makePicture(name);
    default:
        return nullptr;
    }
}

QWidget *AppearanceEditor::makeChoice(const QMetaProperty &property)
{
    auto *box = new QComboBox;
    const char *name = property.name();
    const auto values = property.enumerator();
    for (int i = 0; i < values.keyCount(); ++i)
        box->addItem(QString::fromLatin1(values.key(i)), values.value(i));
    showsBy([this, name, box] { box->setCurrentIndex(box->findData(value(name).toInt())); });
    connect(box, &QComboBox::activated, this, [this, name, box] { set(name, box->currentData()); });
    return box;
}

QWidget *AppearanceEditor::makeLines(const char *name)
{
    auto *lines = new QPlainTextEdit;
    lines->setTabChangesFocus(true);
    lines->setFixedHeight(lines->fontMetrics().lineSpacing() * linesShown + 12);
    showsBy([this, name, lines] {
        const auto text = value(name).toStringList().join(u'\n');
        // Who is writing keeps the place.
        if (text != lines->toPlainText())
            lines->setPlainText(text);
    });
    connect(lines, &QPlainTextEdit::textChanged, this, [this, name, lines] {
        const auto text = lines->toPlainText();
        set(name, text.isEmpty() ? QStringList() : text.split(u'\n'));
    });
    return lines;
}

QWidget *AppearanceEditor::makeColor(const char *name)
{
    auto *button = new QPushButton;
    showsBy([this, button, name] {
        const auto color = value(name).value<QColor>();
        button->setIcon(swatch(color, palette().color(QPalette::ButtonText)));
        button->setText(color.alpha() > 0 ? color.name() : u"aucune"_s);
    });
    connect(button, &QPushButton::clicked, this, [this, name] {
        const auto color = QColorDialog::getColor(value(name).value<QColor>(), this,
                                                  QString::fromLatin1(name), QColorDialog::ShowAlphaChannel);
        if (color.isValid())
            set(name, color);
    });
    return button;
}

QWidget *AppearanceEditor::makeFont(const char *name)
{
    auto *button = new QPushButton;
    showsBy([this, button, name] {
        const auto font = value(name).value<QFont>();
        button->setText(u"%1, %2"_s.arg(font.family()).arg(QFontInfo(font).pointSize()));
    });
    connect(button, &QPushButton::clicked, this, [this, name] {
        bool chosen = false;
        const auto font = QFontDialog::getFont(&chosen, value(name).value<QFont>(), this);
        if (chosen)
            set(name, font);
    });
    return button;
}

QWidget *AppearanceEditor::makePicture(const char *name)
{
    auto *button = new QPushButton;
    showsBy([this, button, name] {
        const auto picture = value(name).value<QPixmap>();
        button->setIcon(picture);
        button->setIconSize(picture.size().boundedTo({100, 24}));
        button->setText(picture.isNull() ? u"aucune"_s : QString());
    });
    connect(button, &QPushButton::clicked, this, [this, name] {
        const QPixmap picture(QFileDialog::getOpenFileName(this, QString::fromLatin1(name), {},
                                                           u"Images (*.png *.bmp *.xpm)"_s));
        if (!picture.isNull())
            set(name, picture);
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
        Read();
    });
    return both;
}

} // namespace Shop
