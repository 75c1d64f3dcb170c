#include "CodesPage.h"

#include "BusyCursor.h"
#include "NewLevelDialog.h"
#include "ShopIcons.h"
#include "ShopLevels.h"
#include "ui_CodesPage.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/descrtree/DescrQueries.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLocale>
#include <QMenu>
#include <QSettings>
#include <QStyle>

#include <utility>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

const QString showCodesKey = u"Codes/ShowCodes"_s;
const QString selectedKey = u"Codes/Selected"_s;

const QString shopName = u"Bijouterie Zelmar"_s;
const QString trialName = u"Essai de 100 000 niveaux"_s;

constexpr qint64 second = 1000;

QString durationText(qint64 milliseconds)
{
    if (milliseconds < second)
        return u"%1 ms"_s.arg(milliseconds);
    const auto seconds = static_cast<double>(milliseconds) / static_cast<double>(second);
    return QLocale(QLocale::French).toString(seconds, 'f', 1) + u" s"_s;
}

// A button of the form shows how things are with its action.
void follows(QPushButton *button, const QAction *action)
{
    const auto follow = [action, button] {
        button->setText(action->text());
        button->setIcon(action->icon());
        button->setEnabled(action->isEnabled());
    };
    QObject::connect(action, &QAction::changed, button, follow);
    follow();
}

} // namespace

CodesPage::CodesPage(ShopDatabase &shop, QWidget *parent)
    : QWidget(parent), m_shop(shop), m_ui(std::make_unique<Ui::CodesPage>())
{
    m_ui->setupUi(this);
    m_tree = m_ui->codeTree;
    setObjectName(u"codes"_s);
    setFocusProxy(m_tree);
    m_query.setCommandText(CodeTableQuery());
    m_source.setDataSet(&m_query);
    m_tree->setRequete(&m_source);
    m_ui->table->ShowRows(m_query);
    connect(m_ui->table, &TablePanel::LevelChosen, this,
            [this](int id) { ShowingExceptions([&] { m_tree->SelectNoeud(id); }); });
    connectActions();
    connectTree();
    use(m_shop);
    follow();
}

CodesPage::~CodesPage() = default;

void CodesPage::connectActions()
{
    struct TWork
    {
        QAction *Action;
        QPushButton *Button;
        TShopIcon Icon;
        void (CodesPage::*Do)();
    };
    const TWork works[] = {
        {m_ui->addDepartment, m_ui->addDepartmentButton, TShopIcon::AddDepartment, &CodesPage::addDepartment},
        {m_ui->addSection, m_ui->addSectionButton, TShopIcon::AddSection, &CodesPage::addSection},
        {m_ui->rename, m_ui->renameButton, TShopIcon::Rename, &CodesPage::rename},
        {m_ui->remove, m_ui->removeButton, TShopIcon::Delete, &CodesPage::remove},
        {m_ui->reload, m_ui->reloadButton, TShopIcon::Reload, &CodesPage::reload},
        {m_ui->rebuild, m_ui->rebuildButton, TShopIcon::Rebuild, &CodesPage::rebuild},
        {m_ui->trial, m_ui->trialButton, TShopIcon::Levels, &CodesPage::toggleTrial}};
    for (const auto &work : works) {
        work.Action->setIcon(ShopIcon(work.Icon));
        follows(work.Button, work.Action);
        connect(work.Action, &QAction::triggered, this,
                [this, work = work.Do] { ShowingExceptions([&] { (this->*work)(); }); });
    }
    connect(m_ui->showCodes, &QAction::toggled, m_tree, &TTreeViewDescr::setAfficherCodeStat);
}

void CodesPage::connectTree()
{
    m_tree->setImages({QIcon(), ShopIcon(TShopIcon::Tag), ShopIcon(TShopIcon::Gem)});
    const int iconSize = m_tree->fontMetrics().height() * 3 / 2;
    m_tree->setIconSize({iconSize, iconSize});
    connect(m_tree, &QWidget::customContextMenuRequested, this, &CodesPage::showMenu);
    connect(m_tree, &TTreeViewDescr::OnNoeudModifie, this,
            [this] { tell(countText() + u". Le libellé est enregistré."_s); });

    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this, &CodesPage::follow);
    const auto *model = m_tree->model();
    connect(model, &QAbstractItemModel::modelReset, this, &CodesPage::follow);
    connect(model, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex &changed) {
        if (changed == m_tree->currentIndex())
            follow();
    });
    connect(model, &QAbstractItemModel::rowsInserted, this, &CodesPage::follow);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &CodesPage::follow);
}

void CodesPage::Restore(const QSettings &settings)
{
    m_ui->showCodes->setChecked(settings.value(showCodesKey).toBool());
    m_firstSelected = settings.value(selectedKey).toInt();
}

void CodesPage::Save(QSettings &settings) const
{
    settings.setValue(showCodesKey, m_ui->showCodes->isChecked());
    if (m_isLoaded && !isTrial())
        settings.setValue(selectedKey, m_tree->DonnerIDSelectionne());
}

void CodesPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (std::exchange(m_isLoaded, true))
        return;
    const auto start = [this] {
        ShowingExceptions([this] { reload(); });
        ShowingExceptions([this] { m_tree->SelectNoeud(m_firstSelected); });
    };
    QMetaObject::invokeMethod(this, start, Qt::QueuedConnection);
}

void CodesPage::use(ShopDatabase &database)
{
    m_tree->LibereMemoire();
    m_database = &database;
    m_query.setConnection(&database.Connection());
    m_tree->setRacine(isTrial() ? trialName : shopName);
    m_tree->setFichierSortie(database.Beside(isTrial() ? u"essai"_s : u"codes"_s));
    m_ui->trial->setIcon(ShopIcon(isTrial() ? TShopIcon::Back : TShopIcon::Levels));
    m_ui->trial->setText(isTrial() ? u"Re&venir à la bijouterie"_s : u"Créer 100 000 ni&veaux…"_s);
    m_ui->trialButton->setToolTip(isTrial() ? u"Quitte la base d'essai"_s
                                            : u"Remplit une base d'essai, à côté de celle du magasin"_s);
}

void CodesPage::load(bool force, const QString &before)
{
    const BusyCursor busy;
    bool isRead = false, isNew = false;
    QStringList uncarried;
    const QObject listener;
    connect(&m_database->Connection(), &TConnection::OnCommand, &listener,
            [&](const QString &command) { isRead = isRead || command == LevelsQuery(); });
    connect(m_tree, &TTreeViewDescr::OnCacheNonEcrit, &listener,
            [&](TTreeViewDescr *, const TUncarried &texts) { uncarried = texts.Codes; });
    connect(m_tree->model(), &QAbstractItemModel::modelReset, &listener, [&] { isNew = true; });
    QElapsedTimer clock;
    clock.start();
    try {
        m_database->Require(CodeTable(isTrial() ? &ManyLevels : &ShopLevels));
    } catch (const EDatabaseError &) {
        // The tree meets the same, and shows what it has in its cache.
    }
    try {
        m_tree->MettreAJourArbre(force);
    } catch (const EDatabaseError &) {
        const auto shown = !m_tree->Arbre()   ? QString()
                           : isNew && !isRead ? countText() + u", venus du cache."_s
                                              : countText() + u" restent affichés."_s;
        tell(u"La base de données est inaccessible. "_s + shown, true);
        throw;
    } catch (const EInOutError &) {
        tell(countText() + u", lus dans la base de données ; le cache ne peut pas être écrit."_s, true);
        throw;
    } catch (const Exception &error) {
        tell(QString::fromUtf8(error.what()), true);
        throw;
    }
    const auto duration = durationText(clock.elapsed());
    if (uncarried.isEmpty())
        tell(before + countText() +
             (isRead ? u", lus dans la base de données en %1."_s : u", chargés du cache en %1."_s)
                 .arg(duration));
    else
        tell(before + countText() +
                 u", lus dans la base de données en %1 ; le cache ne peut pas porter les textes de : %2."_s
                     .arg(duration, uncarried.join(u", "_s)),
             true);
}

void CodesPage::toggleTrial()
{
    if (isTrial()) {
        use(m_shop);
        load(false);
    } else if (MessageDlg(u"Une base d'essai de 100 000 niveaux va être créée à côté de celle du magasin, "
                          "qui reste telle qu'elle est.\nContinuer ?"_s,
                          mtConfirmation, mbYes | mbNo) == mbYes) {
        openTrial();
    }
}

// Each trial begins anew.
void CodesPage::openTrial()
{
    const BusyCursor busy;
    const auto file = m_shop.Beside(u"essai.db"_s);
    m_trial.reset();
    QFile::remove(file);
    RemoveCacheFiles(CacheFilesOf(m_shop.Beside(u"essai"_s)));
    QElapsedTimer clock;
    clock.start();
    auto trial = std::make_unique<ShopDatabase>(file);
    trial->Require(CodeTable(&ManyLevels));
    m_trial = std::move(trial);
    const auto duration = durationText(clock.elapsed());
    use(*m_trial);
    load(false, u"Base d'essai remplie en %1. "_s.arg(duration));
}

void CodesPage::addDepartment()
{
    const auto code = m_tree->DonnerProchainCode(TTreeViewDescr::RootNode);
    if (code.isEmpty()) {
        MessageDlg(QString::fromStdString(MessageText(TMessage::NoMoreDepartments)), mtInformation, mbOK);
        return;
    }
    auto *dialog = new NewLevelDialog(
        u"Nouveau rayon"_s, u"Le rayon est ajouté à la racine."_s, code,
        [this](const TNewLevel &level) { return add(0, level); }, this);
    dialog->open();
}

void CodesPage::addSection()
{
    const auto parent = m_tree->NoeudSelectionne();
    const auto code = m_tree->DonnerProchainCode(parent);
    if (code.isEmpty()) {
        MessageDlg(QString::fromStdString(MessageText(TMessage::NoMoreSections)), mtInformation, mbOK);
        return;
    }
    auto *dialog = new NewLevelDialog(
        u"Nouvelle rubrique"_s, u"Sous "_s + m_tree->Arbre()->LibLong(parent), code,
        [this, id = m_tree->DonnerIDSelectionne()](const TNewLevel &level) { return add(id, level); }, this);
    dialog->open();
}

// A code that is refused is told by the tree.
bool CodesPage::add(int parent, const TNewLevel &level)
{
    const int id = NextIdentifier(m_database->Connection());
    if (parent == 0) {
        m_tree->AjouterRacineCode(id, level.Code, level.Label, level.ShortLabel);
    } else {
        m_tree->SelectNoeud(parent);
        m_tree->AjouterFilsCode(id, level.Code, level.Label, level.ShortLabel);
    }
    const auto node = m_tree->TrouverDescr(id);
    if (node == TTreeViewDescr::NoNode)
        return false;
    tell(countText() +
         u". « %1 » est ajouté sous le code %2."_s.arg(level.Label, m_tree->Arbre()->Code(node)));
    return true;
}

void CodesPage::rename()
{
    m_tree->setFocus();
    m_tree->EditerNoeudSelectionne();
}

void CodesPage::remove()
{
    const int id = m_tree->DonnerIDSelectionne();
    const auto label = m_tree->Arbre()->Libelle(m_tree->NoeudSelectionne());
    m_tree->SupprimerNoeudSelectionne();
    if (m_tree->TrouverDescr(id) == TTreeViewDescr::NoNode)
        tell(countText() + u". « %1 » est supprimé."_s.arg(label));
}

void CodesPage::follow()
{
    const auto *tree = m_tree->Arbre();
    const auto node = tree ? m_tree->NoeudSelectionne() : TTreeViewDescr::NoNode;
    const bool isLevel = node != TTreeViewDescr::NoNode && node != TTreeViewDescr::RootNode;
    m_ui->addDepartment->setEnabled(tree);
    for (auto *action : {m_ui->addSection, m_ui->rename, m_ui->remove})
        action->setEnabled(isLevel);
    m_ui->level->ShowLevel(tree, node);
}

// The key for the menu gives a place that need not be on a node.
void CodesPage::showMenu(const QPoint &place)
{
    m_tree->scrollTo(m_tree->currentIndex());
    const auto at =
        m_tree->indexAt(place).isValid() ? place : m_tree->visualRect(m_tree->currentIndex()).center();
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions({m_ui->addDepartment, m_ui->addSection, m_ui->rename, m_ui->remove});
    menu->addSeparator();
    menu->addActions({m_ui->showCodes, m_ui->reload, m_ui->rebuild});
    menu->popup(m_tree->viewport()->mapToGlobal(at));
}

QString CodesPage::countText() const
{
    const auto levels = m_tree->Arbre() ? m_tree->Arbre()->Count() - 1 : 0;
    return QLocale(QLocale::French).toString(static_cast<qulonglong>(levels)) +
           (levels < 2 ? u" niveau"_s : u" niveaux"_s);
}

void CodesPage::tell(const QString &text, bool isWarning)
{
    m_ui->codesState->setText(text);
    const auto icon = isWarning ? QStyle::SP_MessageBoxWarning : QStyle::SP_DialogApplyButton;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_ui->stateIcon->setPixmap(style()->standardIcon(icon).pixmap(size));
}

} // namespace Shop
