#include "SentPanel.h"

#include "ByteText.h"
#include "ReceiptView.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QStyle>
#include <QTabWidget>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

QPlainTextEdit *makeText(const QString &name, const QString &accessibleName)
{
    auto *text = new QPlainTextEdit;
    text->setObjectName(name);
    text->setAccessibleName(accessibleName);
    text->setReadOnly(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setTabChangesFocus(true);
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    return text;
}

QString pathText(TPrintPath path)
{
    switch (path) {
    case TPrintPath::PassThrough:
        return u"le pilote"_s;
    case TPrintPath::Port:
        return u"le port"_s;
    case TPrintPath::Spooler:
        return u"le serveur d'impression"_s;
    case TPrintPath::None:
        break;
    }
    return u"aucun chemin"_s;
}

} // namespace

QString OutcomeText(const TDosPrintOutcome &outcome)
{
    const auto count = (outcome.Accepted < 2 ? u"%1 octet sur %2"_s : u"%1 octets sur %2"_s)
                           .arg(outcome.Accepted)
                           .arg(outcome.Asked);
    const auto way = outcome.Printer.empty()
                         ? pathText(outcome.Path)
                         : pathText(outcome.Path) + u" « %1 »"_s.arg(QString::fromStdString(outcome.Printer));
    QString text;
    if (outcome.Success)
        text = u"Accepté par %1 : %2."_s.arg(way, count);
    else if (outcome.Unknown)
        text = u"Résultat inconnu de %1 : le ticket a peut-être été imprimé, vérifier avant de recommencer."_s
                   .arg(way);
    else
        text = u"Refusé par %1 : %2."_s.arg(way, count);
    if (!outcome.Success && !outcome.Cause.Text.empty())
        text += u'\n' + QString::fromStdString(outcome.Cause.Words());
    if (!outcome.MissingCharacters.isEmpty())
        text += u"\nCaractères sans équivalent, imprimés « ? » : "_s + outcome.MissingCharacters;
    return text;
}

SentPanel::SentPanel(QWidget *parent)
    : QGroupBox(u"Envoi"_s, parent), m_icon(new QLabel),
      m_outcome(new QLabel(u"Rien n'a encore été envoyé."_s)), m_paper(new ReceiptView),
      m_text(makeText(u"sentText"_s, u"Texte envoyé"_s)),
      m_bytes(makeText(u"sentBytes"_s, u"Octets envoyés"_s))
{
    m_outcome->setObjectName(u"outcome"_s);
    m_outcome->setAccessibleName(u"Résultat de l'envoi"_s);
    m_outcome->setWordWrap(true);
    m_outcome->setTextFormat(Qt::PlainText);
    m_outcome->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto *paper = new QScrollArea;
    paper->setWidgetResizable(true);
    paper->setFrameShape(QFrame::NoFrame);
    paper->setAccessibleName(u"Papier"_s);
    paper->setWidget(m_paper);
    paper->viewport()->setAutoFillBackground(false);
    m_paper->setAutoFillBackground(false);
    paper->setMinimumWidth(m_paper->sizeHint().width() + style()->pixelMetric(QStyle::PM_ScrollBarExtent));

    auto *tabs = new QTabWidget;
    tabs->setObjectName(u"tabs"_s);
    tabs->setDocumentMode(true);
    tabs->addTab(paper, u"Pap&ier"_s);
    tabs->addTab(m_text, u"Te&xte"_s);
    tabs->addTab(m_bytes, u"&Octets"_s);

    auto *layout = new QGridLayout(this);
    layout->addWidget(m_icon, 0, 0, Qt::AlignTop);
    layout->addWidget(m_outcome, 0, 1);
    layout->addWidget(tabs, 1, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    layout->setRowStretch(1, 1);
}

void SentPanel::ShowSent(const QString &text, std::string_view bytes)
{
    m_text->setPlainText(text);
    m_bytes->setPlainText(ByteText(bytes));
}

void SentPanel::ShowPaper(const QList<TReceiptLine> &lines)
{
    m_paper->SetLines(lines);
}

void SentPanel::ShowOutcome(const TDosPrintOutcome &outcome)
{
    const auto icon = outcome.Success   ? QStyle::SP_DialogApplyButton
                      : outcome.Unknown ? QStyle::SP_MessageBoxWarning
                                        : QStyle::SP_MessageBoxCritical;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_icon->setPixmap(style()->standardIcon(icon).pixmap(size));
    m_outcome->setText(OutcomeText(outcome));
}

QString SentPanel::SentText() const
{
    return m_text->toPlainText();
}

} // namespace Shop
