#include <Zelmar01/printing/PrnCode_fm.h>

#include <Zelmar01/core/Colors.h>
#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/LeaveWatch.h>
#include <Zelmar01/core/WidgetBoxes.h>
#include <Zelmar01/printing/PrnCodeBox.h>
#include <Zelmar01/printing/PrnCodeGroup.h>
#include <Zelmar01/printing/PrnCodePanel.h>

#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <QScreen>
#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

constexpr TColor dialogColour(0x00FFDFD4);
// How much of it a dark desktop takes on.
constexpr float darkTint = 0.12F;

struct TTypeItem
{
    const char *Text;
    TPrinterType Type;
};
constexpr TTypeItem typeItems[] = {{QT_TRANSLATE_NOOP("Zelmar01", "HP PCL"), ptHPPCL},
                                   {QT_TRANSLATE_NOOP("Zelmar01", "Epson"), ptEpson},
                                   {QT_TRANSLATE_NOOP("Zelmar01", "IBM"), ptIBM},
                                   {QT_TRANSLATE_NOOP("Zelmar01", "Personalisée"), ptUser1},
                                   {QT_TRANSLATE_NOOP("Zelmar01", "Tiroir"), ptTiroir}};

int itemOf(TPrinterType type)
{
    for (int i = 0; i < static_cast<int>(std::size(typeItems)); ++i)
        if (typeItems[i].Type == type)
            return i;
    return -1;
}

TPrinterType typeOf(int item)
{
    return item < 0 ? ptUser1 : typeItems[item].Type;
}

void copyCodes(const TPrinterCodes &from, TPrinterCodes &to)
{
    for (std::size_t i = 0; i < from.size(); ++i)
        for (const auto &field : PrinterCodeFields())
            to[i].*field.Code = from[i].*field.Code;
}

QColor mixed(const QColor &a, const QColor &b, float shareOfB)
{
    const auto part = [&](float x, float y) { return x + (y - x) * shareOfB; };
    return QColor::fromRgbF(part(a.redF(), b.redF()), part(a.greenF(), b.greenF()),
                            part(a.blueF(), b.blueF()));
}

// As large as its widget, as far as the screen goes; what has the focus is in view.
class TScroll : public QScrollArea
{
public:
    explicit TScroll(QWidget *content)
    {
        setFrameShape(NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidgetResizable(true);
        setWidget(content);
        viewport()->setAutoFillBackground(false);
        content->setAutoFillBackground(false);
        connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, const QWidget *now) {
            if (now && widget()->isAncestorOf(now))
                showWhole(*now);
        });
    }

    QSize sizeHint() const override
    {
        // The lines that the dialog has below and its frame.
        const int others = fontMetrics().height() * 12;
        const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
        const auto whole = widget()->sizeHint();
        const auto space = screen()->availableSize() - QSize(fontMetrics().height() * 3, others);
        const auto shown = whole.boundedTo(space);
        return {shown.width() + (shown.height() < whole.height() ? bar : 0),
                shown.height() + (shown.width() < whole.width() ? bar : 0)};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

private:
    // ensureWidgetVisible() would be content with the cursor of a box.
    void showWhole(const QWidget &shown)
    {
        const QRect place(shown.mapTo(widget(), QPoint()), shown.size());
        ensureVisible(place.right(), place.bottom());
        ensureVisible(place.left(), place.top());
    }
};

} // namespace

TfmPrnCode::TfmPrnCode(QWidget *parent, TCodeSending send)
    : QDialog(parent), m_send(std::move(send)), m_group(new TPrnCodeGroup),
      m_panel(new TPrnCodePanel(m_send != nullptr))
{
    UseMessageBoxes();
    setObjectName(u"fmPrnCode"_s);
    setWindowTitle(tr("Printer Control Codes"));
    auto *const content = new QWidget;
    auto *const upper = new QVBoxLayout(content);
    upper->setContentsMargins({});
    upper->addLayout(makeHead());
    upper->addWidget(m_group);
    auto *const layout = new QVBoxLayout(this);
    layout->addWidget(new TScroll(content));
    layout->addWidget(m_panel);
    layout->addLayout(makeFoot());
    layout->setSizeConstraint(QLayout::SetFixedSize);

    for (auto *const box : m_group->Boxes())
        watch(box);
    connect(m_panel, &TPrnCodePanel::OnSend, this, [this] { userDoes([this] { sendCode(); }); });
    takeColours();
}

QLayout *TfmPrnCode::makeHead()
{
    m_types = new QComboBox;
    m_types->setObjectName(u"PrinterCombo"_s);
    for (const auto &item : typeItems)
        m_types->addItem(QCoreApplication::translate("Zelmar01", item.Text));
    auto *const label = new QLabel(tr("Type de l'imprimante "));
    m_types->setAccessibleName(label->text().trimmed());
    connect(m_types, &QComboBox::currentIndexChanged, this,
            [this] { userDoes([this] { PrinterComboChange(m_types); }); });

    auto *const head = new QGridLayout;
    head->addWidget(label, 0, 0);
    head->addWidget(m_types, 1, 0, Qt::AlignLeft);
    head->setColumnMinimumWidth(1, fontMetrics().height() * 2);
    int row = 0;
    for (const auto &text :
         {tr("Les codes de contrôle doivent être entrés comme des listes de valeurs déci ou hexa-"),
          tr("décimales séparées par des virgules."),
          tr("Pour les fonctions non supportées, laisser la zone vide.")})
        head->addWidget(new QLabel(text), row++, 2);
    head->setColumnStretch(2, 1);
    return head;
}

QLayout *TfmPrnCode::makeFoot()
{
    auto *const notations = new QGroupBox(tr("Notation"));
    notations->setObjectName(u"RgNotation"_s);
    auto *const row = new QHBoxLayout(notations);
    m_notations = new QButtonGroup(notations);
    for (const auto *const name : CodeNotationNames) {
        auto *const button = new QRadioButton(QCoreApplication::translate("Zelmar01", name));
        m_notations->addButton(button, static_cast<int>(m_notations->buttons().size()));
        row->addWidget(button);
    }
    m_notations->button(static_cast<int>(TCodeNotation::Hexadecimal))->setChecked(true);
    m_notation = TCodeNotation::Hexadecimal;
    connect(m_notations, &QButtonGroup::idToggled, this, [this](int, bool checked) {
        if (checked)
            userDoes([this] { RgNotationClick(); });
    });

    auto *const ok = new QPushButton(tr("OK"));
    ok->setObjectName(u"btnOK"_s);
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, [this] { userDoes([this] { OKBtnClick(); }); });
    m_cancel = new QPushButton(tr("Annuler"));
    m_cancel->setObjectName(u"btnCancel"_s);
    connect(m_cancel, &QPushButton::clicked, this, &TfmPrnCode::btnCancelClick);

    auto *const foot = new QHBoxLayout;
    foot->addStretch(1);
    foot->addWidget(notations);
    foot->addStretch(2);
    foot->addWidget(ok);
    foot->addSpacing(fontMetrics().height() * 2);
    foot->addWidget(m_cancel);
    return foot;
}

void TfmPrnCode::watch(TPrnCodeBox *box)
{
    connect(box, &TPrnCodeBox::OnEnter, this, [this, box] {
        m_shown = box;
        m_panel->ShowBox(*box);
    });
    connect(box, &TPrnCodeBox::textChanged, this, [this, box] {
        if (box == m_shown)
            m_panel->ShowBox(*box);
    });
    connect(new TLeaveWatch(box), &TLeaveWatch::OnLeave, this, [this, box] {
        m_left << box;
        // The key or click that moved the focus is not over yet; what it does may be to take the boxes, which
        // reports the same error.
        QTimer::singleShot(0, this, &TfmPrnCode::checkLeft);
    });
}

void TfmPrnCode::checkLeft()
{
    if (isVisible())
        userDoes([this, left = std::exchange(m_left, {})] {
            for (auto *const box : left)
                ZoneOnEditExit(box);
        });
}

template<class Work>
void TfmPrnCode::userDoes(Work work)
{
    m_left.clear();
    ShowingExceptions(work);
}

bool TfmPrnCode::Execute(TPrinterCodes &codes, TPrinterType type)
{
    // The window that it stands on may be closed meanwhile, and takes the dialog with it.
    const QPointer<TfmPrnCode> stillThere(this);
    copyCodes(codes, m_codes);
    showType(type);
    UpdateDisplay();
    const bool confirmed = exec() == Accepted;
    if (!stillThere)
        return false;
    if (confirmed)
        copyCodes(m_codes, codes);
    deleteLater();
    return confirmed;
}

void TfmPrnCode::showType(TPrinterType type)
{
    const QSignalBlocker noChange(m_types);
    m_type = type;
    m_types->setCurrentIndex(itemOf(type));
}

void TfmPrnCode::UpdateDisplay()
{
    const auto &boxes = m_group->Boxes();
    for (std::size_t i = 0; i < boxes.size(); ++i)
        boxes[i]->ShowCode(m_notation, m_codes[m_type].*PrinterCodeFields()[i].Code);
    if (m_shown)
        m_panel->ShowBox(*m_shown);
}

std::string TfmPrnCode::codeIn(TPrnCodeBox &box)
{
    try {
        return box.Code();
    } catch (const EConvertError &) {
        m_types->hidePopup(); // would keep the focus
        box.setFocus();
        m_left.clear(); // the box that lost the focus by this was not left by the user
        throw;
    }
}

void TfmPrnCode::WriteCodes()
{
    const auto &boxes = m_group->Boxes();
    for (std::size_t i = 0; i < boxes.size(); ++i)
        m_codes[m_type].*PrinterCodeFields()[i].Code = TPrinterCode(codeIn(*boxes[i]));
}

void TfmPrnCode::PrinterComboChange(QObject *Sender)
{
    const auto chosen = typeOf(m_types->currentIndex());
    if (Sender) {
        auto goBack = qScopeGuard([this] { showType(m_type); });
        WriteCodes();
        goBack.dismiss();
    }
    m_type = chosen;
    UpdateDisplay();
}

void TfmPrnCode::RgNotationClick()
{
    auto goBack = qScopeGuard([this] {
        const QSignalBlocker noChange(m_notations);
        m_notations->button(static_cast<int>(m_notation))->setChecked(true);
    });
    WriteCodes();
    goBack.dismiss();
    m_notation = static_cast<TCodeNotation>(m_notations->checkedId());
    UpdateDisplay();
}

void TfmPrnCode::ZoneOnEditExit(QObject *Sender)
{
    auto *const box = qobject_cast<TPrnCodeBox *>(Sender);
    if (box && !m_cancel->hasFocus() && m_notation != TCodeNotation::Character)
        codeIn(*box);
}

void TfmPrnCode::OKBtnClick()
{
    WriteCodes();
    accept();
}

void TfmPrnCode::btnCancelClick()
{
    reject();
}

void TfmPrnCode::sendCode()
{
    const TPrinterCode code(codeIn(*m_shown));
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const auto finish = qScopeGuard([] { QApplication::restoreOverrideCursor(); });
    m_send(code);
    m_panel->ShowSent();
}

void TfmPrnCode::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        takeColours();
}

void TfmPrnCode::takeColours()
{
    const auto text = palette().color(QPalette::WindowText);
    const auto desktop = QApplication::palette(this).color(QPalette::Window);
    auto ground = dialogColour.Resolved(palette());
    if (ContrastOf(ground, text) < ContrastOf(Qt::black, text))
        ground = WithContrast(mixed(desktop, ground, darkTint), text);
    if (palette().color(QPalette::Window) == ground)
        return;
    QPalette colours;
    colours.setColor(QPalette::Window, ground);
    setPalette(colours);
}

void TfmPrnCode::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    move(screen()->availableGeometry().center() - rect().center());
}

} // namespace Zelmar01
