#include <Zelmar01/descrtree/TreeViewDescr.h>

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/data/DataErrors.h>

#include <QLineEdit>

namespace Zelmar01 {

namespace {

TMsgDlgBtn inform(TMessage message, TMsgDlgButtons buttons = mbOK)
{
    return MessageDlg(QString::fromStdString(MessageText(message)), mtInformation, buttons);
}

bool isSame(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

// The same levels in the same order.
bool isSame(const TDescrTree &one, const TDescrTree &other)
{
    auto a = TDescrTree::Root, b = TDescrTree::Root;
    while (a != TDescrTree::None && b != TDescrTree::None) {
        if (one.Descr(a) != other.Descr(b))
            return false;
        a = one.Next(a);
        b = other.Next(b);
    }
    return a == b;
}

} // namespace

// None for a department.
TParentCode TTreeViewDescr::codeAbove(TNode parent) const
{
    if (parent == RootNode || parent == NoNode)
        return std::nullopt;
    return Arbre()->Code(parent);
}

QString TTreeViewDescr::DonnerProchainCode(TNode node) const
{
    const auto source = table();
    if (!source)
        return {};
    const auto above = codeAbove(node);
    return source->NextFreeCode(above ? Arbre()->ID(node) : 0, above);
}

bool TTreeViewDescr::EstDisponibleCode(TNode node, const QString &code) const
{
    const auto source = table();
    return source && IsCodeForm(codeAbove(node), code) && MayBeQueried(code) && source->IsFree(code);
}

bool TTreeViewDescr::canAdd(TNode parent, const QString &code, TMessage noMore) const
{
    if (!Arbre())
        throw EInvalidOperation(tr("L'arbre « %1 » n'est pas chargé").arg(objectName()).toStdString());
    const bool isFull = DonnerProchainCode(parent).isEmpty();
    if (isFull || !EstDisponibleCode(parent, code)) {
        inform(isFull ? noMore : TMessage::CodeNotAvailable);
        return false;
    }
    return true;
}

void TTreeViewDescr::AjouterRacineCode(int id, const QString &code, const QString &libelle,
                                       const QString &libCourt)
{
    if (canAdd(RootNode, code, TMessage::NoMoreDepartments))
        add(RootNode, TDescr(id, 0, libelle, libelle, libCourt, UpperCode(code)));
}

void TTreeViewDescr::AjouterFilsCode(int id, const QString &code, const QString &libelle,
                                     const QString &libCourt)
{
    const auto parent = NoeudSelectionne();
    if (parent == RootNode)
        return AjouterRacineCode(id, code, libelle, libCourt);
    if (parent != NoNode && canAdd(parent, code, TMessage::NoMoreSections))
        add(parent, TDescr(id, Arbre()->ID(parent), ChainedLabel(Arbre()->LibLong(parent), libelle), libelle,
                           libCourt, UpperCode(code)));
}

void TTreeViewDescr::add(TNode parent, const TDescr &level)
{
    auto source = requireTable();
    const QPersistentModelIndex above = IndexDe(parent);
    change(source, [&] { source.Insert(level); });
    emit OnNoeudInsere(this);
    if (!above.isValid()) // a receiver loaded the tree again, and the new level with it
        return SelectNoeud(level.ID);
    auto posted = source.Posted(level.ID);
    if (!posted)
        return;
    if (parent == RootNode) {
        posted->IDPere = 0;
        posted->LibCourt = level.LibCourt;
    }
    const auto node = m_model.AddChild(parent, *posted);
    reopen();
    AssocierImage(node);
    select(node);
}

// The cache files go before the commit: should the machine stop in between, they are made anew, and an old
// label never comes back.
void TTreeViewDescr::change(TDescrTable &source, const std::function<void()> &work)
try {
    source.Change([&] {
        work();
        RemoveCacheFiles(cacheFiles());
    });
} catch (...) {
    if (source.MayBeMade())
        showLevelsOf(source);
    throw;
}

// The error that led here is the one to be told, not that the levels cannot be read.
void TTreeViewDescr::showLevelsOf(const TDescrTable &source)
try {
    if (!Arbre())
        return;
    TDescrTree tree(Arbre()->RootText(), source.Levels());
    if (!isSame(*Arbre(), tree))
        replace(std::move(tree));
} catch (const Exception &) {
    return; // the next load shows them
}

void TTreeViewDescr::MettreAJourNoeud(int id, const QString &code, const QString &libelle,
                                      const QString &libCourt, const QString &libLongPere)
{
    if (!m_requete || m_requete->State() == dsInactive)
        return;
    const auto node = DonnerIDSelectionne() == id ? NoeudSelectionne() : TrouverDescr(id);
    if (rewrite(node, TDescr(id, 0, LongLabel(libLongPere, libelle), libelle, libCourt, code)) == wrDone)
        SelectNoeud(id);
}

// `node` is the level's node, if it has one.
TTreeViewDescr::TWritten TTreeViewDescr::rewrite(TNode node, const TDescr &level)
{
    auto source = requireTable();
    if (!source.GoTo(level.ID))
        return wrMissing;
    const auto row = source.Current();
    if (isSame(row.Code, level.Code) && isSame(row.Libelle, level.Libelle) &&
        isSame(row.LibCourt, level.LibCourt))
        return wrSame;
    TDescrTable::TLongLabels below;
    change(source, [&] {
        source.Update(level);
        if (node != NoNode && !m_cascadeSuspendue)
            below = source.UpdateLongLabels(*Arbre(), node, level.LibLong);
    });
    if (node != NoNode)
        m_model.SetLevel(node, level.Code, level.Libelle, level.LibCourt, level.LibLong);
    setLongLabels(below);
    emit OnNoeudModifie(this);
    return wrDone;
}

void TTreeViewDescr::MettreAJourFils(TNode node)
{
    if (node == RootNode || node == NoNode || Arbre()->ChildCount(node) == 0)
        return;
    auto source = requireTable();
    TDescrTable::TLongLabels below;
    change(source, [&] { below = source.UpdateLongLabels(*Arbre(), node, Arbre()->LibLong(node)); });
    setLongLabels(below);
    SelectionnerNoeud(NoeudSelectionne());
}

void TTreeViewDescr::setLongLabels(const TDescrTable::TLongLabels &labels)
{
    for (const auto &[node, label] : labels)
        m_model.SetLibLong(node, label);
}

void TTreeViewDescr::SupprimerNoeudSelectionne()
{
    // A receiver or the event loop of a box may load the tree again.
    QPersistentModelIndex index = currentIndex();
    const int id = DonnerIDSelectionne();
    if (!index.isValid() || NoeudDe(index) == RootNode)
        return;
    if (m_model.hasChildren(index)) {
        inform(TMessage::LevelHasChildren);
        return;
    }
    if (inform(TMessage::ConfirmLevelDeletion, mbOK | mbNo) != mbOK)
        return;
    if (!index.isValid())
        index = IndexDe(TrouverDescr(id));
    if (!index.isValid() || m_model.hasChildren(index))
        return;
    auto source = requireTable();
    if (!source.GoTo(id))
        return;
    try {
        change(source, [&] { source.Delete(); });
    } catch (const EDatabaseUnreachable &) {
        throw;
    } catch (const EDatabaseError &error) {
        // Without a cause it was the dataset itself, or a receiver of its signals.
        if (!error.Cause().Text.empty())
            inform(TMessage::LevelInUse);
        throw;
    }
    emit OnNoeudSupprime(this);
    if (index.isValid())
        m_model.RemoveLeaf(NoeudDe(index));
}

void TTreeViewDescr::EditerNoeudSelectionne()
{
    if (currentIndex().isValid())
        edit(currentIndex(), AllEditTriggers, nullptr);
}

bool TTreeViewDescr::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event)
{
    // A click on the selected node only starts a delay, at whose end AllEditTriggers comes.
    const bool isStart =
        trigger == AllEditTriggers || (trigger != SelectedClicked && editTriggers().testFlag(trigger));
    if (index.isValid() && isStart && trigger != NoEditTriggers && state() != EditingState && !canEdit(index))
        return true;
    return QTreeView::edit(index, trigger, event);
}

// A node that shows its code gets its bare label first, and is edited a moment later.
bool TTreeViewDescr::canEdit(const QModelIndex &index)
{
    const auto node = NoeudDe(index);
    if (node == RootNode || index.data().toString() == Arbre()->Libelle(node))
        return true; // what is not editable at all is known to the view
    m_model.SetBareNode(node);
    m_restart.start();
    return false;
}

void TTreeViewDescr::restartEdit()
{
    if (NoeudSelectionne() == m_model.BareNode())
        EditerNoeudSelectionne();
    if (state() != EditingState)
        m_model.SetBareNode(NoNode);
}

// When the tree was loaded again while the label was being written, the view has let go of the editor: it has
// hidden it.
void TTreeViewDescr::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    m_model.SetBareNode(NoNode);
    if (!editor || !editor->isHidden())
        QTreeView::closeEditor(editor, hint);
}

int TTreeViewDescr::longestLabel() const
{
    const auto *dataset = dataSet();
    const auto *field = dataset ? dataset->FindField(QStringLiteral("DESCR_ART_LIBELLE")) : nullptr;
    return field ? field->Size() : 0;
}

// An error is shown when the editor is gone: a window that takes the focus from it would commit it again.
void TTreeViewDescr::takeLabel(const QModelIndex &index, const QString &libelle)
{
    const QPersistentModelIndex edited = index;
    try {
        writeLabel(NoeudDe(index), libelle);
    } catch (...) {
        const auto show = [this, edited, libelle, error = std::current_exception()] {
            refuseLabel(edited, libelle, error);
        };
        QMetaObject::invokeMethod(this, show, Qt::QueuedConnection);
    }
}

void TTreeViewDescr::writeLabel(TNode node, const QString &libelle)
{
    const auto level = Arbre()->Descr(node);
    const auto parent = Arbre()->Parent(node);
    const auto above = parent == RootNode ? QString() : Arbre()->LibLong(parent);
    switch (
        rewrite(node, TDescr(level.ID, 0, LongLabel(above, libelle), libelle, level.LibCourt, level.Code))) {
    case wrMissing:
        throw EDatabaseError(tr("Le niveau « %1 » n'est plus dans la base").arg(level.Code).toStdString());
    case wrDone:
        // The user may have moved on, which is what ended the editing.
        SelectionnerNoeud(NoeudSelectionne());
        break;
    case wrSame:
        break;
    }
}

// The user gets back what he typed, also when he had moved on.
void TTreeViewDescr::refuseLabel(const QModelIndex &index, const QString &libelle,
                                 const std::exception_ptr &error)
{
    const QPersistentModelIndex edited = index;
    ShowingExceptions([&] { std::rethrow_exception(error); });
    if (!edited.isValid())
        return;
    setCurrentIndex(edited);
    m_model.SetBareNode(NoeudDe(edited));
    EditerNoeudSelectionne();
    if (auto *editor = qobject_cast<QLineEdit *>(indexWidget(edited)))
        editor->setText(libelle);
}

} // namespace Zelmar01
