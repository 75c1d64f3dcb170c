#pragma once

#include "ArticleSheet.h"
#include "ShopDatabase.h"

#include <Zelmar01/controls/LabelURL.h>
#include <Zelmar01/controls/zmGauges.h>
#include <Zelmar01/data/Query.h>
#include <Zelmar01/keylists/ComboBoxFk.h>

#include <QWidget>

class QGroupBox;
class QLabel;

namespace Shop {

/// The small controls over the shop's articles: the sheet of an article, links that go with it, gauges that
/// follow a long piece of work, and the editors of an appointment.
class ControlsPage : public QWidget
{
    Q_OBJECT
public:
    /// The articles are read when the page is first shown. `shop` must live longer.
    explicit ControlsPage(ShopDatabase &shop, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;

private:
    QGroupBox *makeLinks();
    QGroupBox *makeGauges();
    Zelmar01::TLabelURL *makeLink(const QString &name, const QString &caption, Zelmar01::TURLType type);
    QGroupBox *makeAppointment();
    QWidget *makeFoot();

    void load();
    void showArticle();
    void checkTickets();

    ShopDatabase &m_shop;
    Zelmar01::TQuery m_articles;
    ArticleSheet *m_sheetOfArticle;
    Zelmar01::TComboBoxFk *m_find;
    Zelmar01::TLabelURL *m_sheet, *m_order, *m_folder;
    Zelmar01::TzmGauge *m_gauge, *m_upright;
    QLabel *m_told;
    int m_starts = 0;
    bool m_isLoaded = false;
};

} // namespace Shop
