#include "NewLevelDialog.h"

#include "CodeTable.h"

#include <Zelmar01/core/ExceptionDisplay.h>

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

constexpr int widthInCharacters = 46;

} // namespace

NewLevelDialog::NewLevelDialog(const QString &title, const QString &place, const QString &code, TAdd add,
                               QWidget *parent)
    : QDialog(parent), m_add(std::move(add)), m_code(makeLine(u"code"_s, u"Code"_s, CodeSize)),
      m_label(makeLine(u"label"_s, u"Libellé"_s, LabelSize)),
      m_shortLabel(makeLine(u"shortLabel"_s, u"Libellé court"_s, ShortLabelSize))
{
    setObjectName(u"newLevel"_s);
    setWindowTitle(title);
    setAttribute(Qt::WA_DeleteOnClose);
    m_code->setText(code);

    auto *where = new QLabel(place);
    where->setTextFormat(Qt::PlainText);
    where->setWordWrap(true);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto *ok = buttons->button(QDialogButtonBox::Ok);
    ok->setText(u"&Ajouter"_s);
    buttons->button(QDialogButtonBox::Cancel)->setText(u"A&nnuler"_s);

    auto *form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(where);
    form->addRow(u"&Code"_s, m_code);
    form->addRow(u"&Libellé"_s, m_label);
    form->addRow(u"Libellé c&ourt"_s, m_shortLabel);
    form->addRow(buttons);
    setMinimumWidth(fontMetrics().averageCharWidth() * widthInCharacters);
    m_label->setFocus();

    const auto follow = [this, ok] {
        ok->setEnabled(!m_code->text().isEmpty() && !m_label->text().trimmed().isEmpty());
    };
    connect(m_code, &QLineEdit::textChanged, this, follow);
    connect(m_label, &QLineEdit::textChanged, this, follow);
    connect(m_label, &QLineEdit::textEdited, this, &NewLevelDialog::proposeShortLabel);
    connect(m_shortLabel, &QLineEdit::textEdited, this, [this] { m_ownShortLabel = true; });
    connect(buttons, &QDialogButtonBox::accepted, this, &NewLevelDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &NewLevelDialog::reject);
    follow();
}

QLineEdit *NewLevelDialog::makeLine(const QString &name, const QString &accessibleName, int size)
{
    auto *line = new QLineEdit;
    line->setObjectName(name);
    line->setAccessibleName(accessibleName);
    line->setMaxLength(size);
    return line;
}

void NewLevelDialog::proposeShortLabel(const QString &label)
{
    if (!m_ownShortLabel)
        m_shortLabel->setText(label.toUpper().left(ShortLabelSize).trimmed());
}

void NewLevelDialog::accept()
{
    ShowingExceptions([this] {
        if (m_add({m_code->text(), m_label->text().trimmed(), m_shortLabel->text().trimmed()}))
            QDialog::accept();
    });
}

} // namespace Shop
