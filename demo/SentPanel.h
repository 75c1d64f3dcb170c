#pragma once

#include "ReceiptReader.h"

#include <Zelmar01/printing/DosPrint.h>

#include <QGroupBox>

class QLabel;
class QPlainTextEdit;

namespace Shop {

class ReceiptView;

/// What was sent to the printer, as text and as bytes, what became of it, and the paper of the virtual
/// printer.
class SentPanel : public QGroupBox
{
    Q_OBJECT
public:
    explicit SentPanel(QWidget *parent = nullptr);

    void ShowSent(const QString &text, std::string_view bytes);
    void ShowPaper(const QList<TReceiptLine> &lines);
    void ShowOutcome(const Zelmar01::TDosPrintOutcome &outcome);

    QString SentText() const;

private:
    QLabel *m_icon, *m_outcome;
    ReceiptView *m_paper;
    QPlainTextEdit *m_text, *m_bytes;
};

/// An outcome in words: what was accepted by what, or why it failed.
QString OutcomeText(const Zelmar01::TDosPrintOutcome &outcome);

} // namespace Shop
