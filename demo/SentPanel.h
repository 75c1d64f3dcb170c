#pragma once

#include "ReceiptReader.h"

#include <Zelmar01/printing/DosPrint.h>

#include <QGroupBox>

#include <memory>

namespace Ui {
class SentPanel;
}

namespace Shop {

/// What was sent to the printer, as text and as bytes, what became of it, and the paper of the virtual
/// printer.
class SentPanel : public QGroupBox
{
    Q_OBJECT
public:
    explicit SentPanel(QWidget *parent = nullptr);
    ~SentPanel() override;

    void ShowSent(const QString &text, std::string_view bytes);
    void ShowPaper(const QList<TReceiptLine> &lines);
    void ShowOutcome(const Zelmar01::TDosPrintOutcome &outcome);

    QString SentText() const;

private:
    const std::unique_ptr<Ui::SentPanel> m_ui;
};

/// An outcome in words: what was accepted by what, or why it failed.
QString OutcomeText(const Zelmar01::TDosPrintOutcome &outcome);

} // namespace Shop
