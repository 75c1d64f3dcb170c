#include <Zelmar01/descrtree/TreeViewDescr.h>

#include "LabelDelegate.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/core/Translation.h>
#include <Zelmar01/core/WidgetBoxes.h>
#include <Zelmar01/data/DataErrors.h>

#include <QMouseEvent>

#include <chrono>

namespace Zelmar01 {

namespace {

constexpr int rootImage = 2;
constexpr std::chrono::milliseconds restartDelay{10};

int depthOf(const TDescrTree &tree, TDescrTree::TNode node)
{
    int depth = 0;
    for (; node != TDescrTree::Root; node = tree.Parent(node))
        ++depth;
    return depth;
}

// The same shape and the same texts, or EConvertError that names the line of the object file.
void requireSameNodes(const TDescrTree &shown, const TDescrTree &read, const TNodeTextRule &rule,
                      const QString &path)
{
    auto a = shown.Next(TDescrTree::Root), b = read.Next(TDescrTree::Root);
    for (std::size_t line = 2; a != TDescrTree::None || b != TDescrTree::None; ++line) {
        if (a == TDescrTree::None || b == TDescrTree::None || depthOf(shown, a) != depthOf(read, b) ||
            shown.Text(a, rule) != read.Text(b, rule))
            throw EConvertError(
                Filled(Translate("Zelmar01", "%1, ligne %2 : ce niveau n'est pas celui du noeud de l'arbre"),
                       {path.toStdString(), std::to_string(line)}));
        a = shown.Next(a);
        b = read.Next(b);
    }
}

} // namespace

TTreeViewDescr::TTreeViewDescr(QWidget *parent) : QTreeView(parent)
{
    UseMessageBoxes();
    setModel(&m_model);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(SelectedClicked | EditKeyPressed);
    setItemDelegate(new TLabelDelegate(
        this, [this](const QModelIndex &index, const QString &label) { takeLabel(index, label); },
        [this] { return longestLabel(); }));
    m_restart.setSingleShot(true);
    m_restart.setInterval(restartDelay);
    connect(&m_restart, &QTimer::timeout, this, &TTreeViewDescr::restartEdit);
}

TTreeViewDescr::~TTreeViewDescr()
{
    ShowingExceptions([this] {
        if (auto *dataset = dataSet())
            dataset->Close();
    });
}

void TTreeViewDescr::setAfficherCodeStat(bool show)
{
    m_model.SetRule({show, Separateur()});
}

void TTreeViewDescr::setSeparateur(const QString &separator)
{
    m_model.SetRule({AfficherCodeStat(), separator});
}

std::optional<TDescrTable> TTreeViewDescr::table() const
{
    auto *dataset = dataSet();
    if (!dataset)
        return std::nullopt;
    if (auto *query = qobject_cast<TQuery *>(dataset))
        return TDescrTable(*query);
    throw EInvalidOperation(
        tr("L'ensemble de données de l'arbre « %1 » n'est pas une requête").arg(objectName()).toStdString());
}

TDescrTable TTreeViewDescr::requireTable() const
{
    if (auto there = table())
        return *there;
    throw EInvalidOperation(MessageText(TMessage::NoQueryLinked));
}

TCacheFiles TTreeViewDescr::cacheFiles() const
{
    return CacheFilesOf(m_fichierSortie.isEmpty() ? DefaultCachePrefix() : m_fichierSortie);
}

void TTreeViewDescr::MettreAJourArbre(bool forcer)
{
    if (!m_requete)
        throw EInvalidOperation(
            tr("L'arbre « %1 » n'a pas de source de données (Requete)").arg(objectName()).toStdString());
    if (m_fichierSortie.isEmpty())
        m_fichierSortie = DefaultCachePrefix();
    std::exception_ptr trouble;
    TUncarried uncarried;
    auto tree = loaded(forcer, trouble, uncarried);

    EnregistrerConfiguration();
    LibereMemoire();
    m_model.SetTree(std::move(tree));
    m_model.SetRootImage(rootImage);
    try {
        reopen();
    } catch (const EDatabaseError &) {
        if (!trouble)
            trouble = std::current_exception();
    }
    ReproduireConfiguration();
    if (!uncarried.IsEmpty())
        emit OnCacheNonEcrit(this, uncarried);
    if (trouble)
        std::rethrow_exception(trouble);
}

// What leaves a tree to be shown all the same is kept in `trouble`.
TDescrTree TTreeViewDescr::loaded(bool forcer, std::exception_ptr &trouble, TUncarried &uncarried) const
{
    const auto source = table();
    if (!source) {
        MessageDlg(QString::fromStdString(MessageText(TMessage::NoQueryLinked)), mtCustom, mbOK);
        return ReadCacheFiles(cacheFiles(), m_model.Rule());
    }
    if (!forcer && cacheFiles().Exist())
        if (auto tree = cached(*source, trouble))
            return std::move(*tree);
    TDescrTree tree(RootText(m_racine), source->Levels());
    try {
        uncarried = writeCache(tree.Rows());
    } catch (const EInOutError &) {
        trouble = std::current_exception();
    }
    return tree;
}

// The tree of the cache files, unless they are to be made anew. They serve as they are when the database
// cannot be asked.
std::optional<TDescrTree> TTreeViewDescr::cached(const TDescrTable &source, std::exception_ptr &trouble) const
{
    const auto files = cacheFiles();
    try {
        const int recorded = RecordedCount(files.Objects);
        bool fits = false;
        try {
            fits = recorded == source.Count();
        } catch (const EDatabaseError &) {
            trouble = std::current_exception();
        }
        if (!fits && !trouble)
            return std::nullopt;
        return ReadCacheFiles(files, m_model.Rule());
    } catch (const EConvertError &) {
        // Files that do not belong together.
    } catch (const EInOutError &) {
        // Writing them anew tells what is wrong with the disk.
    }
    if (trouble)
        std::rethrow_exception(trouble);
    return std::nullopt;
}

void TTreeViewDescr::MettreAJourFichiersArbre()
{
    const auto source = table();
    if (!source) {
        MessageDlg(QString::fromStdString(MessageText(TMessage::NoQueryLinked)), mtCustom, mbOK);
        return;
    }
    if (const auto uncarried = writeCache(source->Levels()); !uncarried.IsEmpty())
        emit OnCacheNonEcrit(this, uncarried);
}

// An old pair that could not be replaced must not be believed later on.
TUncarried TTreeViewDescr::writeCache(const TDescrRows &rows) const
{
    const auto files = cacheFiles();
    TUncarried uncarried;
    try {
        uncarried = WriteCacheFiles(files, RootText(m_racine), m_model.Rule(), rows);
    } catch (const EInOutError &) {
        const auto error = std::current_exception();
        try {
            RemoveCacheFiles(files);
        } catch (const EInOutError &) {
            // The first error tells enough.
        }
        std::rethrow_exception(error);
    }
    if (!uncarried.IsEmpty())
        RemoveCacheFiles(files);
    return uncarried;
}

int TTreeViewDescr::NbNoeudsDsBase() const
{
    const auto source = table();
    return source ? source->Count() : -1;
}

bool TTreeViewDescr::RemettreObjetsDepuisFichier(const QString &fichier)
{
    if (!Arbre())
        throw EInvalidOperation(tr("L'arbre « %1 » n'est pas chargé").arg(objectName()).toStdString());
    TDescrTree tree(Arbre()->RootText(), ReadObjectFile(fichier));
    requireSameNodes(*Arbre(), tree, m_model.Rule(), fichier);
    replace(std::move(tree));
    return true;
}

void TTreeViewDescr::replace(TDescrTree tree)
{
    EnregistrerConfiguration();
    LibereMemoire();
    m_model.SetTree(std::move(tree));
    ReproduireConfiguration();
}

void TTreeViewDescr::AssocierImage(TNode node)
{
    if (node == RootNode)
        m_model.SetRootImage(-1);
    else if (const auto index = IndexDe(node); index.isValid())
        update(index);
}

void TTreeViewDescr::LibereMemoire()
{
    m_restart.stop();
    m_clearing = true;
    m_model.SetTree(std::nullopt);
    m_clearing = false;
}

void TTreeViewDescr::reopen()
{
    auto *dataset = dataSet();
    if (!dataset)
        return;
    dataset->Close();
    dataset->Open();
    dataset->First();
}

void TTreeViewDescr::select(TNode node)
{
    if (node == NoeudSelectionne())
        SelectionnerNoeud(node);
    else
        setCurrentIndex(IndexDe(node));
}

void TTreeViewDescr::SelectNoeud(int id)
{
    if (const auto node = TrouverDescr(id); node != NoNode)
        select(node);
}

void TTreeViewDescr::SelectionnerNoeud(TNode node)
{
    auto *dataset = dataSet();
    if (m_clearing || node == NoNode || !dataset || !dataset->Active())
        return;
    if (node != RootNode)
        dataset->Locate(QString::fromLatin1(DescrIdColumn), Arbre()->ID(node),
                        loCaseInsensitive | loPartialKey);
    else if (!dataset->Eof())
        dataset->First();
}

int TTreeViewDescr::DonnerIDSelectionne() const
{
    const auto node = NoeudSelectionne();
    return node == NoNode ? 0 : Arbre()->ID(node);
}

TTreeViewDescr::TNode TTreeViewDescr::TrouverDescr(int id) const
{
    return Arbre() ? Arbre()->Find(id) : NoNode;
}

void TTreeViewDescr::EnregistrerConfiguration()
{
    m_selected = DonnerIDSelectionne();
    m_expanded.clear();
    if (!Arbre())
        return;
    for (auto node = Arbre()->Next(RootNode); node != NoNode; node = Arbre()->Next(node))
        if (Arbre()->ChildCount(node) > 0 && isExpanded(IndexDe(node)))
            m_expanded.push_back(Arbre()->ID(node));
}

// All is expanded before anything is selected: until the view lays itself out that costs little.
void TTreeViewDescr::ReproduireConfiguration()
{
    if (!Arbre())
        return;
    scheduleDelayedItemsLayout();
    expand(IndexDe(RootNode));
    for (const int id : m_expanded)
        if (const auto node = TrouverDescr(id); node != NoNode)
            expand(IndexDe(node));
    m_expanded.clear();
    if (Arbre()->Count() == 1)
        return;
    const auto node = m_selected < 1 ? NoNode : TrouverDescr(m_selected);
    select(node == NoNode ? Arbre()->AtIndex(1) : node);
}

// Leaving a node that is being edited writes its label, and a receiver of that event may load the tree again.
void TTreeViewDescr::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    const QPersistentModelIndex selected = current, left = previous;
    if (auto *editor = indexWidget(previous)) {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
    QTreeView::currentChanged(selected, left);
    ShowingExceptions([&] { SelectionnerNoeud(NoeudDe(selected)); });
}

void TTreeViewDescr::mousePressEvent(QMouseEvent *event)
{
    QTreeView::mousePressEvent(event);
    if (event->button() != Qt::RightButton)
        return;
    if (const auto index = indexAt(event->position().toPoint()); index.isValid()) {
        setCurrentIndex(index);
        setFocus(Qt::MouseFocusReason);
    }
}

} // namespace Zelmar01
