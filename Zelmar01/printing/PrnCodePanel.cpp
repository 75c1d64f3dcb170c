#include <Zelmar01/printing/PrnCodePanel.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/printing/ControlCodes.h>
#include <Zelmar01/printing/PrinterCodes.h>
#include <Zelmar01/printing/PrnCodeBox.h>

#include <QCoreApplication>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

QString inPlain()
{
    return QCoreApplication::translate("Zelmar01", "En clair");
}

TCodeNotation otherThan(TCodeNotation notation)
{
    return notation == TCodeNotation::Hexadecimal ? TCodeNotation::Decimal : TCodeNotation::Hexadecimal;
}

QString sizeText(std::size_t size)
{
    const auto text = (size < 2 ? QCoreApplication::translate("Zelmar01", "%1 octet")
                                : QCoreApplication::translate("Zelmar01", "%1 octets"))
                          .arg(size);
    return size > TPrinterCode::MaxLength
               ? text + QCoreApplication::translate("Zelmar01", ", %1 gardés").arg(TPrinterCode::MaxLength)
               : text;
}

} // namespace

TPrnCodePanel::TPrnCodePanel(bool canSend, QWidget *parent)
    : QWidget(parent), m_name(new QLabel), m_size(new QLabel), m_otherName(new QLabel),
      m_plainName(new QLabel), m_other(makeValue(u"otherNotation"_s)), m_plain(makeValue(u"mnemonics"_s))
{
    setObjectName(u"codePanel"_s);
    m_size->setObjectName(u"codeSize"_s);
    auto font = m_name->font();
    font.setBold(true);
    m_name->setFont(font);
    m_plain->setAccessibleName(inPlain());
    // The longest texts of these labels, so that nothing moves when they change.
    m_name->setMinimumWidth(m_name->fontMetrics().horizontalAdvance(
        QCoreApplication::translate("Zelmar01", "Justification Centrée")));
    m_plainName->setMinimumWidth(m_plainName->fontMetrics().horizontalAdvance(inPlain()));
    m_otherName->setMinimumWidth(
        m_otherName->fontMetrics().horizontalAdvance(QCoreApplication::translate("Zelmar01", "Décimal")));

    auto *const grid = new QGridLayout(this);
    grid->setVerticalSpacing(0);
    grid->setHorizontalSpacing(fontMetrics().height());
    grid->addWidget(m_name, 0, 0);
    grid->addWidget(m_size, 1, 0);
    grid->addWidget(m_otherName, 0, 1);
    grid->addWidget(m_plainName, 1, 1);
    grid->addWidget(m_other, 0, 2);
    grid->addWidget(m_plain, 1, 2);
    grid->setColumnStretch(2, 1);
    if (canSend) {
        m_send = new QPushButton(tr("Envoyer à l'imprimante"));
        m_send->setObjectName(u"sendCode"_s);
        m_send->setToolTip(tr("Envoie ce code à l'imprimante, sans rien enregistrer"));
        m_send->setEnabled(false);
        grid->addWidget(m_send, 0, 3, 2, 1);
        connect(m_send, &QPushButton::clicked, this, &TPrnCodePanel::OnSend);
    }
    takeColours();
}

// A line that shows the beginning of a long text and can be scrolled and copied from.
QLineEdit *TPrnCodePanel::makeValue(const QString &name)
{
    auto *const value = new QLineEdit;
    value->setObjectName(name);
    value->setReadOnly(true);
    value->setFrame(false);
    value->setFocusPolicy(Qt::ClickFocus);
    value->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // takes what the dialog leaves
    return value;
}

void TPrnCodePanel::ShowBox(TPrnCodeBox &box)
{
    m_name->setText(box.accessibleName());
    m_plainName->setText(inPlain());
    try {
        showCode(box, box.Code());
    } catch (const EConvertError &error) {
        showError(QString::fromUtf8(error.what()));
    }
    box.setAccessibleDescription(m_plain->text());
    m_other->setCursorPosition(0);
    m_plain->setCursorPosition(0);
}

void TPrnCodePanel::showCode(const TPrnCodeBox &box, std::string_view code)
{
    const TPrinterCode kept(code);
    const auto notation = otherThan(box.Notation());
    m_count = kept.Bytes().size();
    m_size->setText(sizeText(code.size()));
    m_otherName->setText(
        QCoreApplication::translate("Zelmar01", CodeNotationNames[static_cast<std::size_t>(notation)]));
    m_other->setAccessibleName(m_otherName->text());
    m_other->setText(CodeText(notation, kept));
    m_plain->setText(QString::fromStdString(CodeMnemonics(kept)));
    if (m_send)
        m_send->setEnabled(!kept.IsEmpty());
}

void TPrnCodePanel::showError(const QString &text)
{
    m_size->clear();
    m_other->clear();
    m_plain->setText(text);
    if (m_send)
        m_send->setEnabled(false);
}

void TPrnCodePanel::ShowSent()
{
    m_size->setText(sizeText(m_count) + (m_count < 2 ? tr(" envoyé") : tr(" envoyés")));
}

void TPrnCodePanel::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        takeColours();
}

void TPrnCodePanel::takeColours()
{
    for (auto *const value : {m_other, m_plain}) {
        QPalette colours;
        colours.setBrush(QPalette::Base, palette().window());
        colours.setBrush(QPalette::Text, palette().windowText());
        value->setPalette(colours);
    }
}

} // namespace Zelmar01
