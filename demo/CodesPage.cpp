#include "CodesPage.h"

#include "BusyCursor.h"
#include "LevelPanel.h"
#include "NewLevelDialog.h"
#include "ShopIcons.h"
#include "ShopLevels.h"
#include "TablePanel.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/descrtree/DescrQueries.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QFile>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
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

// A button that does what an action does, and looks and is enabled as it is.
QPushButton *buttonOf(QAction *action)
{
    auto *button = new QPushButton;
    const auto follow = [action, button] {
        const auto key = action->shortcut().toString(QKeySequence::NativeText);
        button->setText(action->text());
        button->setIcon(action->icon());
        button->setEnabled(action->isEnabled());
        button->setToolTip(key.isEmpty() ? action->toolTip() : action->toolTip() + u" ("_s + key + u')');
    };
    QObject::connect(action, &QAction::changed, button, follow);
    QObject::connect(button, &QPushButton::clicked, action, &QAction::trigger);
    follow();
    return button;
}

QWidget *buttonsOf(const QString &title, const QList<QAction *> &actions)
{
    auto *group = new QGroupBox(title);
    auto *layout = new QGridLayout(group);
    for (int place = 0; place < actions.size(); ++place) {
        const bool isAlone = place % 2 == 0 && place + 1 == actions.size();
        layout->addWidget(buttonOf(actions[place]), place / 2, place % 2, 1, isAlone ? 2 : 1);
    }
    for (const int column : {0, 1})
        layout->setColumnStretch(column, 1);
    return group;
}

} // namespace

CodesPage::CodesPage(ShopDatabase &shop, QWidget *parent)
    : QWidget(parent), m_shop(shop), m_tree(new TTreeViewDescr), m_level(new LevelPanel)
{
    setObjectName(u"codes"_s);
    m_query.setCommandText(CodeTableQuery());
    m_source.setDataSet(&m_query);
    m_tree->setRequete(&m_source);

    makeActions();
    auto *tree = makeTree();
    auto *table = new TablePanel(m_query);
    connect(table, &TablePanel::LevelChosen, this,
            [this](int id) { ShowingExceptions([&] { m_tree->SelectNoeud(id); }); });
    auto *changes = buttonsOf(u"Modifier"_s, {m_addDepartment, m_addSection, m_rename, m_remove});
    auto *base = buttonsOf(u"Base de données"_s, {m_reload, m_rebuild, m_toggleTrial});
    auto *state = makeState();
    // The Tab key goes through them in the order in which they become children.
    for (auto *part :
         {tree, static_cast<QWidget *>(m_level), changes, static_cast<QWidget *>(table), base, state})
        part->setParent(this);
    setFocusProxy(m_tree);

    auto *right = new QVBoxLayout;
    right->addWidget(m_level);
    right->addWidget(changes);
    right->addWidget(table, 1);
    right->addWidget(base);
    auto *layout = new QGridLayout(this);
    layout->addWidget(tree, 0, 0);
    layout->addLayout(right, 0, 1);
    layout->addWidget(state, 1, 0, 1, 2);
    layout->setColumnStretch(0, 3);
    layout->setColumnStretch(1, 2);
    layout->setRowStretch(0, 1);

    use(m_shop);
    follow();
}

QAction *CodesPage::makeAction(const QString &name, TShopIcon icon, const QString &text, const QString &tip,
                               void (CodesPage::*work)())
{
    auto *action = new QAction(ShopIcon(icon), text, this);
    action->setObjectName(name);
    action->setToolTip(tip);
    connect(action, &QAction::triggered, this, [this, work] { ShowingExceptions([&] { (this->*work)(); }); });
    return action;
}

void CodesPage::makeActions()
{
    m_addDepartment = makeAction(u"addDepartment"_s, TShopIcon::AddDepartment, u"Ajouter un &rayon…"_s,
                                 u"Ajoute un rayon à la racine"_s, &CodesPage::addDepartment);
    m_addSection = makeAction(u"addSection"_s, TShopIcon::AddSection, u"Ajouter une r&ubrique…"_s,
                              u"Ajoute une rubrique au niveau sélectionné"_s, &CodesPage::addSection);
    m_rename = makeAction(u"rename"_s, TShopIcon::Rename, u"Re&nommer"_s,
                          u"Change le libellé du niveau sélectionné"_s, &CodesPage::rename);
    m_remove = makeAction(u"remove"_s, TShopIcon::Delete, u"&Supprimer"_s,
                          u"Supprime le niveau sélectionné"_s, &CodesPage::remove);
    m_reload = makeAction(u"reload"_s, TShopIcon::Reload, u"Re&charger"_s,
                          u"Charge l'arbre, depuis le cache s'il compte autant de niveaux que la base"_s,
                          &CodesPage::reload);
    m_rebuild = makeAction(u"rebuild"_s, TShopIcon::Rebuild, u"Reconstruire &le cache"_s,
                           u"Lit toute la base et écrit le cache à nouveau"_s, &CodesPage::rebuild);
    m_toggleTrial = makeAction(u"trial"_s, TShopIcon::Levels, {}, {}, &CodesPage::toggleTrial);
    m_showCodes = new QAction(u"A&fficher les codes"_s, this);
    m_showCodes->setObjectName(u"showCodes"_s);
    m_showCodes->setCheckable(true);
    connect(m_showCodes, &QAction::toggled, m_tree, &TTreeViewDescr::setAfficherCodeStat);

    const auto onTree = [this](QAction *action, const QKeySequence &key) {
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetShortcut);
        m_tree->addAction(action);
    };
    onTree(m_addDepartment, Qt::SHIFT | Qt::Key_Insert);
    onTree(m_addSection, Qt::Key_Insert);
    onTree(m_rename, Qt::Key_F2);
    onTree(m_remove, Qt::Key_Delete);
    m_reload->setShortcut(Qt::Key_F5);
    m_reload->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(m_reload);
}

QWidget *CodesPage::makeTree()
{
    m_tree->setObjectName(u"codeTree"_s);
    m_tree->setAccessibleName(u"Codes statistiques"_s);
    m_tree->setSeparateur(u" – "_s);
    m_tree->setImages({QIcon(), ShopIcon(TShopIcon::Tag), ShopIcon(TShopIcon::Gem)});
    const int iconSize = m_tree->fontMetrics().height() * 3 / 2;
    m_tree->setIconSize({iconSize, iconSize});
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
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

    auto *showCodes = new QCheckBox(m_showCodes->text());
    connect(showCodes, &QCheckBox::toggled, m_showCodes, &QAction::setChecked);
    connect(m_showCodes, &QAction::toggled, showCodes, &QCheckBox::setChecked);

    auto *group = new QGroupBox(u"Codes statistiques"_s);
    auto *layout = new QVBoxLayout(group);
    layout->addWidget(m_tree, 1);
    layout->addWidget(showCodes);
    return group;
}

QWidget *CodesPage::makeState()
{
    m_stateIcon = new QLabel;
    m_state = new QLabel;
    m_state->setObjectName(u"codesState"_s);
    m_state->setAccessibleName(u"État"_s);
    m_state->setTextFormat(Qt::PlainText);
    m_state->setWordWrap(true);
    m_state->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    layout->addWidget(m_stateIcon);
    layout->addWidget(m_state, 1);
    return row;
}

void CodesPage::Restore(const QSettings &settings)
{
    m_showCodes->setChecked(settings.value(showCodesKey).toBool());
    m_firstSelected = settings.value(selectedKey).toInt();
}

void CodesPage::Save(QSettings &settings) const
{
    settings.setValue(showCodesKey, m_showCodes->isChecked());
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
    m_toggleTrial->setIcon(ShopIcon(isTrial() ? TShopIcon::Back : TShopIcon::Levels));
    m_toggleTrial->setText(isTrial() ? u"Re&venir à la bijouterie"_s : u"Créer 100 000 ni&veaux…"_s);
    m_toggleTrial->setToolTip(isTrial() ? u"Quitte la base d'essai"_s
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
    m_addDepartment->setEnabled(tree);
    for (auto *action : {m_addSection, m_rename, m_remove})
        action->setEnabled(isLevel);
    m_level->ShowLevel(tree, node);
}

// The key for the menu gives a place that need not be on a node.
void CodesPage::showMenu(const QPoint &place)
{
    m_tree->scrollTo(m_tree->currentIndex());
    const auto at =
        m_tree->indexAt(place).isValid() ? place : m_tree->visualRect(m_tree->currentIndex()).center();
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions({m_addDepartment, m_addSection, m_rename, m_remove});
    menu->addSeparator();
    menu->addActions({m_showCodes, m_reload, m_rebuild});
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
    m_state->setText(text);
    const auto icon = isWarning ? QStyle::SP_MessageBoxWarning : QStyle::SP_DialogApplyButton;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_stateIcon->setPixmap(style()->standardIcon(icon).pixmap(size));
}

} // namespace Shop
