#include "Options.h"

#include <Zelmar01/core/Messages.h>

#include <QCommandLineParser>
#include <QDir>

#include <array>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

struct TNotationName
{
    QLatin1StringView Name;
    TNotation Notation;
};
constexpr std::array<TNotationName, 2> notations{
    {{"decimal"_L1, TNotation::Decimal}, {"hexa"_L1, TNotation::Hexadecimal}}};

// The drawer's set is no printer's: it comes with --drawer.
constexpr std::array<TPrinterType, 5> selectableTypes{ptHPPCL, ptEpson, ptIBM, ptPlain, ptUser1};

constexpr int lastConversion = 2;

QString defaultPrinter()
{
    return QString::fromStdString(MessageText(TMessage::DefaultPrinter));
}

void defineOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        u"Envoie un texte tel quel à une imprimante de tickets, et ouvre le tiroir-caisse."_s);
    parser.addPositionalArgument(
        u"texte"_s,
        u"Fichier texte à imprimer. Sans lui, ou si c'est -, le texte est lu sur l'entrée standard."_s,
        u"[texte]"_s);
    parser.addOptions({
        {{u"h"_s, u"help"_s}, u"Affiche cette aide."_s},
        {u"printer"_s,
         u"Imprimante du système, port local (LPT1:, LPT2:, COM1: à COM4:) ou « Par défaut » (valeur "
         "par défaut)."_s,
         u"nom"_s},
        {u"port"_s,
         u"Périphérique d'un port local, et au besoin ses réglages (voir plus bas). Peut être répétée."_s,
         u"nom=périphérique"_s},
        {u"passthrough"_s, u"Passe par le pilote de l'imprimante (échappement PASSTHROUGH)."_s},
        {u"encoding"_s, u"Codage du texte : utf-8 (valeur par défaut) ou windows-1252."_s, u"codage"_s},
        {u"conversion"_s,
         u"Conversion du texte : 0 aucune (valeur par défaut), 1 page de codes DOS, 2 jeu national "
         "français."_s,
         u"n"_s},
        {u"type"_s,
         u"Jeu de codes à utiliser : hppcl, epson, ibm, plain (valeur par défaut, sans codes) ou user1."_s,
         u"type"_s},
        {u"ini"_s, u"Initialise l'imprimante avant le texte."_s},
        {u"eject"_s, u"Avance à la page suivante après le texte."_s},
        {u"cut"_s, u"Coupe le papier après le texte."_s},
        {u"drawer"_s,
         u"Ouvre le tiroir dans le même envoi que la fin du texte. Sans texte, seul le tiroir s'ouvre."_s},
        {u"codes"_s, u"Lit les codes dans ce fichier (extension .PCC si aucune n'est donnée)."_s,
         u"fichier"_s},
        {u"list"_s, u"Affiche les imprimantes et les ports, et ce qui se trouve derrière eux."_s},
        {u"show-codes"_s,
         u"Affiche tous les codes, en notation decimal (valeur par défaut) ou hexa ; la notation est facultative."_s,
         u"notation"_s},
        {u"save-codes"_s, u"Écrit tous les codes dans ce fichier."_s, u"fichier"_s},
    });
}

// The parser knows no option whose value may be left out: the notation is put in here.
QStringList withNotation(QStringList arguments)
{
    const auto isNotation = [](const QString &text) {
        return std::ranges::any_of(notations, [&](const TNotationName &notation) {
            return text.compare(notation.Name, Qt::CaseInsensitive) == 0;
        });
    };
    for (qsizetype i = 0; i < arguments.size() && arguments[i] != "--"_L1; ++i) {
        if (arguments[i] != "--show-codes"_L1)
            continue;
        const bool given = i + 1 < arguments.size() && isNotation(arguments[i + 1]);
        arguments[i] += u'=' + (given ? arguments.takeAt(i + 1) : QString(notations.front().Name));
    }
    return arguments;
}

[[noreturn]] void refuse(const QString &why)
{
    throw EUsage(why.toStdString());
}

TNotation notationOf(const QString &text)
{
    for (const auto &notation : notations)
        if (text.compare(notation.Name, Qt::CaseInsensitive) == 0)
            return notation.Notation;
    refuse(u"Notation inconnue « %1 » : decimal ou hexa."_s.arg(text));
}

TPrinterType typeOf(const QString &text)
{
    for (const auto type : selectableTypes)
        if (text.compare(TypeName(type), Qt::CaseInsensitive) == 0)
            return type;
    refuse(u"Type d'imprimante inconnu « %1 » : hppcl, epson, ibm, plain ou user1."_s.arg(text));
}

int conversionOf(const QString &text)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < 0 || number > lastConversion)
        refuse(u"Conversion inconnue « %1 » : 0, 1 ou 2."_s.arg(text));
    return number;
}

bool isWindows1252(const QString &encoding)
{
    if (encoding.compare("windows-1252"_L1, Qt::CaseInsensitive) == 0)
        return true;
    if (encoding.compare("utf-8"_L1, Qt::CaseInsensitive) != 0)
        refuse(u"Codage inconnu « %1 » : utf-8 ou windows-1252."_s.arg(encoding));
    return false;
}

// A code file without a directory is one of the current directory here, as the files of any command are.
QString codeFile(const QString &name)
{
    return QDir::current().absoluteFilePath(name);
}

QString nonEmptyValue(const QCommandLineParser &parser, const QString &option)
{
    auto value = parser.value(option);
    if (value.isEmpty())
        refuse(u"Valeur vide après « --%1 »."_s.arg(option));
    return value;
}

} // namespace

QString TypeName(TPrinterType type)
{
    static constexpr std::array<QLatin1StringView, PrinterTypeCount> names{
        "HPPCL"_L1, "Epson"_L1, "IBM"_L1, "Plain"_L1, "User1"_L1, "Tiroir"_L1};
    return names[type];
}

TPrintToolOptions ParseOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    defineOptions(parser);
    if (!parser.parse(withNotation(arguments)))
        refuse(parser.errorText());

    TPrintToolOptions options;
    options.Help = parser.isSet(u"help"_s);
    options.List = parser.isSet(u"list"_s);
    options.PassThrough = parser.isSet(u"passthrough"_s);
    options.Printer = defaultPrinter();
    if (parser.isSet(u"show-codes"_s))
        options.ShowCodes = notationOf(parser.value(u"show-codes"_s));
    if (parser.isSet(u"save-codes"_s))
        options.SaveCodes = codeFile(nonEmptyValue(parser, u"save-codes"_s));
    if (parser.isSet(u"codes"_s))
        options.LoadCodes = codeFile(nonEmptyValue(parser, u"codes"_s));
    if (parser.isSet(u"encoding"_s))
        options.IsWindows1252 = isWindows1252(parser.value(u"encoding"_s));
    if (parser.isSet(u"printer"_s))
        options.Printer = nonEmptyValue(parser, u"printer"_s);
    if (parser.isSet(u"conversion"_s))
        options.Conversion = conversionOf(parser.value(u"conversion"_s));
    if (parser.isSet(u"type"_s))
        options.Ticket.Type = typeOf(parser.value(u"type"_s));
    for (const auto &port : parser.values(u"port"_s)) {
        try {
            options.Ports.Set(port.toStdString(), "--port");
        } catch (const EConvertError &error) {
            throw EUsage(error.what());
        }
    }
    options.Ticket.Ini = parser.isSet(u"ini"_s);
    options.Ticket.Eject = parser.isSet(u"eject"_s);
    options.Ticket.Cut = parser.isSet(u"cut"_s);
    options.Ticket.OpenDrawer = parser.isSet(u"drawer"_s);

    const auto texts = parser.positionalArguments();
    if (texts.size() > 1)
        refuse(u"Un seul fichier texte à la fois : « %1 » est de trop."_s.arg(texts[1]));
    if (!texts.isEmpty() && texts.front() != "-"_L1)
        options.TextFile = texts.front();
    const auto &ticket = options.Ticket;
    if (options.PrintsNothing() &&
        (!texts.isEmpty() || ticket.Ini || ticket.Eject || ticket.Cut || ticket.OpenDrawer))
        refuse(u"--list, --show-codes et --save-codes n'impriment rien : les donner sans texte, --ini, "
               "--eject, --cut ni --drawer."_s);
    return options;
}

QString HelpText()
{
    QCommandLineParser parser;
    defineOptions(parser);
    return parser.helpText() + uR"(
Le texte seul est converti ; les codes qui l'entourent partent tels quels, et les
fins de ligne du texte aussi. Le code Ini du jeu Epson s'achève par ESC « ! » :
l'imprimante prend le premier octet du texte pour le paramètre de ce code.

Réglages d'un port, après son périphérique et séparés par des virgules :
  speed=1200 à 115200, bits=7|8, parity=none|even|odd, stop=1|2,
  flow=none|rtscts|xonxoff ; sans réglage, le périphérique reste comme il est.

Code de retour :
  0  accepté par l'imprimante, le port ou le spouleur
  1  échec ; la cause, et le remède quand il y en a un, sont sur l'erreur standard
  2  ligne de commande incorrecte
  3  résultat inconnu : le ticket a peut-être été imprimé

Exemples :
  zelmar01-print --list
  zelmar01-print --printer COM1: --port COM1:=/dev/ttyUSB0,speed=9600 ticket.txt
  zelmar01-print --printer Ticket --type epson --conversion 1 --cut --drawer ticket.txt
  echo "Merci de votre visite" | zelmar01-print --printer LPT1: --conversion 1
  zelmar01-print --codes boutique.PCC --show-codes hexa
)"_s;
}

} // namespace Zelmar01
