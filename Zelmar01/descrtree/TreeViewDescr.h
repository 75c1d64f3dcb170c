#pragma once

#include <Zelmar01/core/Messages.h>
#include <Zelmar01/data/DataSource.h>
#include <Zelmar01/descrtree/CacheFiles.h>
#include <Zelmar01/descrtree/DescrModel.h>
#include <Zelmar01/descrtree/DescrTable.h>

#include <QPointer>
#include <QTimer>
#include <QTreeView>

#include <exception>
#include <optional>
#include <vector>

namespace Zelmar01 {

/// The tree of the statistical codes: the levels of the table descr_article below one root, kept in two cache
/// files between two starts, and changed in place.
///
/// A host links Requete to a query on the table, gives it a connection and calls MettreAJourArbre(). From
/// then on tree, table and cache files stay in step as long as changes go through this tree: a change is
/// written to the database first, in one transaction in which the cache files are removed too, and shown when
/// it is committed; when the commit fails, what the database then has is shown. Levels that others add or
/// delete are noticed at the next MettreAJourArbre(), which compares the number of rows; other changes of
/// others are not, and want a forced one.
///
/// A node is a number (see TDescrTree), good until it is deleted or the tree is loaded again; NoNode stands
/// for none. The user's selection is the view's current index.
///
/// Operations called by the host raise EDatabaseError, EInOutError (a cache file) or EConvertError (a level
/// that cannot stand in the tree). What the user starts in the view itself, an edit in place or a move, goes
/// to the exception display. Refusals by the rules of the codes are message boxes.
class TTreeViewDescr : public QTreeView
{
    Q_OBJECT
    Q_PROPERTY(QString FichierSortie READ FichierSortie WRITE setFichierSortie)
    Q_PROPERTY(QString Racine READ Racine WRITE setRacine)
    Q_PROPERTY(QString Separateur READ Separateur WRITE setSeparateur)
    Q_PROPERTY(bool AfficherCodeStat READ AfficherCodeStat WRITE setAfficherCodeStat)
public:
    using TNode = TDescrTree::TNode;
    static constexpr TNode RootNode = TDescrTree::Root;
    static constexpr TNode NoNode = TDescrTree::None;

    explicit TTreeViewDescr(QWidget *parent = nullptr);
    /// Closes the dataset behind Requete.
    ~TTreeViewDescr() override;

    /// The path prefix of the two cache files; their names are appended to it as they stand (see
    /// CacheFilesOf()). While it is empty, MettreAJourArbre() sets it to "tmp" in the application's
    /// directory.
    QString FichierSortie() const { return m_fichierSortie; }
    void setFichierSortie(const QString &prefix) { m_fichierSortie = prefix; }

    /// The label that the root gets when the tree is next read from the database; "Corvantix" when it is
    /// empty. Cache files keep the one that they were written with.
    QString Racine() const { return m_racine; }
    void setRacine(const QString &label) { m_racine = label; }

    /// Whether nodes show code, separator and label instead of the label alone, and the separator, "-" at
    /// first. Setting them changes the shown texts at once; the cache files are made anew at the next load.
    bool AfficherCodeStat() const { return m_model.Rule().AfficherCodeStat; }
    void setAfficherCodeStat(bool show);
    QString Separateur() const { return m_model.Rule().Separateur; }
    void setSeparateur(const QString &separator);

    /// The data source of an editable query (a TQuery) on descr_article; its connection serves the tree's
    /// other queries as well. The host owns it.
    TDataSource *Requete() const { return m_requete; }
    void setRequete(TDataSource *requete) { m_requete = requete; }

    /// While set, a changed label is not copied into the long labels of the levels below; the host calls
    /// MettreAJourFils() when it sees fit. Not set at first.
    bool CascadeSuspendue() const { return m_cascadeSuspendue; }
    void setCascadeSuspendue(bool suspendue) { m_cascadeSuspendue = suspendue; }

    /// The images of the nodes: the third for the root, the second for all levels. With a single image the
    /// levels show that.
    const QList<QIcon> &Images() const { return m_model.Images(); }
    void setImages(const QList<QIcon> &images) { m_model.SetImages(images); }

    // Loading.

    /// Loads the tree, from the cache files when both are there, fit each other and record as many levels as
    /// the table has; else, or when `forcer` is set, from the database, and writes them anew. The expanded
    /// nodes and the selection stay. Requete must be set; a data source without a dataset is answered by a
    /// message box, and the cache files serve as they are.
    ///
    /// When the database cannot be reached and no rebuild is forced, the tree is shown from the cache files,
    /// and when the files cannot be written it is shown from the database; then the error is raised. Any
    /// other error leaves the shown tree as it was.
    void MettreAJourArbre(bool forcer);
    /// Writes both cache files anew from the database; without a dataset there is a message box instead. The
    /// files are removed when they cannot carry the levels (see OnCacheNonEcrit).
    void MettreAJourFichiersArbre();
    /// The number of levels in the table; -1 without Requete or its dataset.
    int NbNoeudsDsBase() const;
    /// The number of levels that an object file records; -2 when there is no such file. Raises EConvertError
    /// when it is not a number.
    int NbNoeudsDsFichier(const QString &fichier) const { return RecordedCount(fichier); }
    /// Gives the loaded nodes the records of an object file, by their places; true when done. Raises
    /// EConvertError, and changes nothing, when the records do not belong to these nodes.
    bool RemettreObjetsDepuisFichier(const QString &fichier);
    /// Sets a node's images: none for the root, the second of more than one for a level. Loading gives the
    /// root the third.
    void AssocierImage(TNode node);
    /// Deletes every node, the root too.
    void LibereMemoire();

    // Codes.

    /// The next free code below a node, or for a department below the root or NoNode; empty when none is left
    /// or there is no query.
    QString DonnerProchainCode(TNode node) const;
    /// Whether a code has the form of a child of a node (a department's for the root or NoNode) and no row of
    /// the table carries it; false without a query.
    bool EstDisponibleCode(TNode node, const QString &code) const;

    // Changes. The host supplies the identifiers of new levels.

    /// Adds a department; refused in a message box when all codes are taken or this one is not available.
    void AjouterRacineCode(int id, const QString &code, const QString &libelle, const QString &libCourt);
    /// Adds a level below the selected node, a department below the root; does nothing without a selection.
    void AjouterFilsCode(int id, const QString &code, const QString &libelle, const QString &libCourt);
    /// Writes a level's code, label and short label, and the long labels of the level (`libLongPere` and its
    /// label) and of all levels below it. Does nothing on a closed dataset, for a level without a row, and
    /// when nothing but letter case is different.
    void MettreAJourNoeud(int id, const QString &code, const QString &libelle, const QString &libCourt,
                          const QString &libLongPere);
    /// Writes the long labels of all levels below a level from its own.
    void MettreAJourFils(TNode node);
    /// Starts editing the label of the selected level in place.
    void EditerNoeudSelectionne();
    /// Deletes the selected level when it has no children and the user confirms it. When the database refuses
    /// there is a message box, and the error is raised.
    void SupprimerNoeudSelectionne();

    // Selection.

    /// Selects the level with that identifier, if there is one.
    void SelectNoeud(int id);
    /// Moves the dataset to a node's row: to the first row for the root unless the dataset is at its end. A
    /// closed dataset is left alone.
    void SelectionnerNoeud(TNode node);
    TNode NoeudSelectionne() const { return m_model.NodeOf(currentIndex()); }
    /// 0 for the root and without a selection.
    int DonnerIDSelectionne() const;
    /// The first level with that identifier in the order of the tree; NoNode for 0 and when there is none.
    TNode TrouverDescr(int id) const;
    /// Remember and restore the expanded nodes and the selection, while the program runs.
    void EnregistrerConfiguration();
    void ReproduireConfiguration();

    // Nodes.

    /// Null when there are no nodes.
    const TDescrTree *Arbre() const { return m_model.Tree(); }
    QModelIndex IndexDe(TNode node) const { return m_model.IndexOf(node); }
    TNode NoeudDe(const QModelIndex &index) const { return m_model.NodeOf(index); }
    int ImageDe(TNode node) const { return m_model.ImageIndex(node); }

signals:
    /// A level was added and is in the table; its node comes after this.
    void OnNoeudInsere(Zelmar01::TTreeViewDescr *sender);
    void OnNoeudModifie(Zelmar01::TTreeViewDescr *sender);
    /// A level was deleted from the table; its node goes after this.
    void OnNoeudSupprime(Zelmar01::TTreeViewDescr *sender);
    /// There are no cache files, because they cannot carry these texts; the next load reads the database.
    void OnCacheNonEcrit(Zelmar01::TTreeViewDescr *sender, const Zelmar01::TUncarried &texts);

protected:
    using QTreeView::edit;
    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    enum TWritten { wrMissing, wrSame, wrDone };

    // Loading.
    TDataSet *dataSet() const { return m_requete ? m_requete->DataSet() : nullptr; }
    std::optional<TDescrTable> table() const;
    TDescrTable requireTable() const;
    TCacheFiles cacheFiles() const;
    TDescrTree loaded(bool forcer, std::exception_ptr &trouble, TUncarried &uncarried) const;
    std::optional<TDescrTree> cached(const TDescrTable &table, std::exception_ptr &trouble) const;
    TUncarried writeCache(const TDescrRows &rows) const;
    void replace(TDescrTree tree);
    void reopen();
    void select(TNode node);

    // Changes.
    TParentCode codeAbove(TNode parent) const;
    bool canAdd(TNode parent, const QString &code, TMessage noMore) const;
    void add(TNode parent, const TDescr &level);
    void change(TDescrTable &table, const std::function<void()> &work);
    void showLevelsOf(const TDescrTable &table);
    TWritten rewrite(TNode node, const TDescr &level);
    void setLongLabels(const TDescrTable::TLongLabels &labels);

    // Editing in place.
    bool canEdit(const QModelIndex &index);
    void restartEdit();
    int longestLabel() const;
    void takeLabel(const QModelIndex &index, const QString &libelle);
    void writeLabel(TNode node, const QString &libelle);
    void refuseLabel(const QModelIndex &index, const QString &libelle, const std::exception_ptr &error);

    TDescrModel m_model;
    QPointer<TDataSource> m_requete;
    QString m_fichierSortie, m_racine;
    std::vector<int> m_expanded; // identifiers, between two loads
    int m_selected = 0;
    bool m_clearing = false;
    bool m_cascadeSuspendue = false;
    QTimer m_restart;
};

} // namespace Zelmar01
