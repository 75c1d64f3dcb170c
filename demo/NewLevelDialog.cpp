#include "NewLevelDialog.h"

#include "CodeTable.h"
#include "ui_NewLevelDialog.h"

#include <Zelmar01/core/ExceptionDisplay.h>

#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

NewLevelDialog::NewLevelDialog(const QString &title, const QString &place, const QString &code, TAdd add,
                               QWidget *parent)
    : QDialog(parent), m_add(std::move(add)), m_ui(std::make_unique<Ui::NewLevelDialog>())
{
    m_ui->setupUi(this);
    setObjectName(u"newLevel"_s);
    setWindowTitle(title);
    setAttribute(Qt::WA_DeleteOnClose);
    m_ui->place->setText(place);
    m_ui->code->setMaxLength(CodeSize);
    m_ui->label->setMaxLength(LabelSize);
    m_ui->shortLabel->setMaxLength(ShortLabelSize);
    m_ui->code->setText(code);
    m_ui->label->setFocus();
    auto *ok = m_ui->buttons->button(QDialogButtonBox::Ok);
    ok->setText(u"&Ajouter"_s);
    m_ui->buttons->button(QDialogButtonBox::Cancel)->setText(u"A&nnuler"_s);

    const auto follow = [this, ok] {
        ok->setEnabled(!m_ui->code->text().isEmpty() && !m_ui->label->text().trimmed().isEmpty());
    };
    connect(m_ui->code, &QLineEdit::textChanged, this, follow);
    connect(m_ui->label, &QLineEdit::textChanged, this, follow);
    connect(m_ui->label, &QLineEdit::textEdited, this, &NewLevelDialog::proposeShortLabel);
    connect(m_ui->shortLabel, &QLineEdit::textEdited, this, [this] { m_ownShortLabel = true; });
    follow();
}

NewLevelDialog::~NewLevelDialog() = default;

void NewLevelDialog::proposeShortLabel(const QString &label)
{
    if (!m_ownShortLabel)
        m_ui->shortLabel->setText(label.toUpper().left(ShortLabelSize).trimmed());
}

void NewLevelDialog::accept()
{
    ShowingExceptions([this] {
        if (m_add({m_ui->code->text(), m_ui->label->text().trimmed(), m_ui->shortLabel->text().trimmed()}))
            QDialog::accept();
    });
}

} // namespace Shop
