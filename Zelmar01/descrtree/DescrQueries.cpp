#include <Zelmar01/descrtree/DescrQueries.h>

namespace Zelmar01 {

QString LevelsQuery()
{
    return QStringLiteral("SELECT DISTINCT da.DESCR_ART_ID, da.DESCR_ART_ID_PERE, da.DESCR_ART_CODE, "
                          "da.DESCR_ART_LIBELLE, da.DESCR_ART_LIB_LONG, da.DESCR_ART_LIB_COURT "
                          "FROM DESCR_ARTICLE da  with (nolock)  ORDER BY da.DESCR_ART_CODE");
}

QString CountQuery()
{
    return QStringLiteral("select count(descr_art_id) from descr_article with (nolock)");
}

QString ChildCodesQuery(int id)
{
    return QStringLiteral(
               "select descr_art_code from descr_article with (nolock) WHERE DESCR_ART_ID_PERE = ") +
           QString::number(id) + QStringLiteral(" order by descr_art_code");
}

QString CodeQuery(const QString &code)
{
    return QStringLiteral(
               "select descr_art_code from descr_article with (nolock)  WHERE descr_art_code = '") +
           code + u'\'';
}

} // namespace Zelmar01
