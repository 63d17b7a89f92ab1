#pragma once

#include <array>
#include <string_view>

namespace bouncecheck {

/// Words of the sentences that say something of a mailbox, as they are written; ASCII letters in
/// either case.

/// What may stand between a name and what is said of it.
inline constexpr auto linkWords = std::to_array<std::string_view>({
    // English
    "is", "are", "was", "has", "have", "been", "be", "does", "do", "can", "could", "cannot",
    "currently", "temporarily", "permanently", "specified", "provided",
    // German, Dutch, Scandinavian
    "ist", "wird", "wurde", "konnte", "leider", "angegeben", "je", "kon", "werd", "är", "er", "har",
    "kunde", "kunne", "ble", "blev",
    // Romance
    "est", "es", "é", "è", "ha", "esta", "este", "foi", "fue", "sido", "stato", "ya", "já",
    "indicada", "indicado", "indicato", "informado", "informada", "especificada", "especificado",
    "specificato",
    // Slavic
    "jest", "został", "została", "zostało", "zostal", "zostala", "już", "byl", "byla", "bylo",
    "již", "был", "была", "больше", "був", "була", "більше",
    // Hungarian, Turkish, Greek
    "már", "véglegesen", "artık", "είναι",
});
/// The same, between a host's address and what is said of it.
inline constexpr auto hostLinkWords =
    std::to_array<std::string_view>({"from", "for", "ip", "address", "host", "client", "server",
                                     "your", "the", "access", "connection", "adresse"});

/// What may stand in front of "user ann", or "domain x.example", where these are the subject.
inline constexpr auto articles = std::to_array<std::string_view>({
    // English
    "the", "a", "an", "this", "that",
    // German, Dutch, Scandinavian
    "der", "die", "das", "dieser", "diese", "dieses", "het", "dit", "deze", "den", "det", "denne",
    "dette", "denna", "detta", "et",
    // Romance
    "el", "la", "le", "lo", "il", "o", "ce", "cet", "cette", "este", "esta", "ese", "esa", "esse",
    "essa", "questo", "questa", "acest", "această",
    // Slavic
    "ten", "ta", "to", "tento", "tato", "этот", "Этот", "эта", "Эта", "цей", "Цей", "ця", "Ця",
    // Hungarian, Turkish, Greek
    "az", "ez", "bu", "ο", "Ο", "η", "Η", "το", "Το",
});
/// What stands between something and those whose it is.
inline constexpr auto genitives = std::to_array<std::string_view>({
    // English
    "of", "for", "with",
    // German, Dutch, Scandinavian
    "von", "für", "mit", "im", "van", "til", "för",
    // Romance
    "de", "des", "du", "del", "della", "do", "da", "pour", "para", "per", "avec", "con", "com",
});
/// What may be somebody's that is gone with them, beside the names of mailboxes.
inline constexpr auto addressWords = std::to_array<std::string_view>({
    // What somebody has
    "address", "e-mail", "email", "mail", "message", "delivery", "adresse", "boîte", "boite",
    "réception", "buzón", "buzon", "casilla", "dirección", "direccion", "caixa", "endereço",
    "endereco", "casella", "indirizzo", "adres",
    // What was refused for that
    "rcpt", "rejected", "refused", "bounced", "returned", "responded", "replied",
});
/// What else may stand in front of somebody's address: "Key ann@x.example not found".
inline constexpr auto namedThings = std::to_array<std::string_view>({
    // English
    "key", "certificate", "license", "licence", "subscription", "entry", "record", "rule", "policy",
    "filter", "quota", "script",
    // German
    "schlüssel", "zertifikat", "lizenz",
    // Romance
    "clé", "certificat", "clave", "certificado", "licencia", "chave", "licença", "chiave",
    "certificato",
    // Russian
    "ключ", "Ключ", "сертификат", "Сертификат",
    // What else than a mail system has users
    "proxy", "relay", "login", "auth", "bind", "database",
});
/// What a reply may begin with that is no mailbox, though some are called so; also, of what leads
/// "to" a mailbox, what is not gone with it: "Connection to ann@x.example was closed".
inline constexpr auto notMailboxes = std::to_array<std::string_view>({
    "mail", "email", "e-mail", "post", "message", "nachricht", "service", "server", "host",
    "connection", "access", "session", "delivery", "forwarding", "subscription",
});
/// What may stand between those and a mailbox.
inline constexpr auto attributes = std::to_array<std::string_view>({
    // English
    "specified", "given", "destination", "virtual", "local", "following",
    // German, Dutch, Scandinavian
    "angegebene", "adressierte", "gewünschte", "opgegeven", "angivna", "oppgitte", "angivne", "här",
    // Slavic
    "podany", "podana", "podane", "zadaná", "zadaný", "указанный", "Указанный", "почтовый",
    "Почтовый", "данный", "Данный", "вказана", "Вказана",
    // Hungarian, Turkish
    "megadott", "belirtilen",
});
/// What may stand in front of the name of a kind, "email account", and behind it, "user ID".
inline constexpr auto kindStarts = std::to_array<std::string_view>({"email", "e-mail", "mail"});
inline constexpr auto kindEnds = std::to_array<std::string_view>({"id", "name", "address", "adresse"});
/// What clauses begin with, in front of that.
inline constexpr auto openers = std::to_array<std::string_view>({
    "because", "since", "as", "that", "but", "sorry", "weil", "dass", "denn", "omdat", "dat", "car",
    "que", "porque", "pois", "perché", "ponieważ", "protože", "поскольку", "что",
});
/// What clauses begin with that only suppose something: "if the mailbox was deleted".
inline constexpr auto conditions = std::to_array<std::string_view>({
    // English
    "if", "when", "whether", "unless", "assuming", "should", "case", "perhaps", "maybe", "possibly",
    "probably", "possible", "mean",
    // German, Dutch
    "wenn", "falls", "sofern", "ob", "vielleicht", "eventuell", "möglicherweise", "indien",
    "wanneer", "misschien",
    // Romance
    "si", "se", "cuando", "quando", "lorsque", "peut-être", "quizás", "talvez", "forse",
    // Slavic
    "jeśli", "если", "Если", "когда", "Когда", "возможно", "Возможно",
});
/// The same, in languages that put no space behind.
inline constexpr auto joinedConditions = std::to_array<std::string_view>({"如果", "若", "假如", "もし", "만약"});
/// Who does not know a mailbox, in front of the words that say so.
inline constexpr auto pronouns = std::to_array<std::string_view>({"i", "we"});
/// What may end a sentence behind what is said, in front of a stop.
inline constexpr auto closings = std::to_array<std::string_view>({
    // English
    "here", "any more", "anymore", "any longer", "on this", "at this", "in this", "locally",
    "permanently", "for good", "on our server", "on our system", "on any of our", "on the server",
    "on the system", "in the system", "in the alias", "in the post office", "in our system",
    "in our records", "in our directory", "in our user", "from the system", "from our system",
    "from this server", "from this system", "from our server", "from the server", "by our system",
    "by this system", "by our server", "by this server", "of this host", "of this server",
    "of this system", "(in reply to rcpt", "[rcpt_to]", "(state ", "and no longer", "and is no longer", "and can no longer",
    // German, Dutch
    "mehr", "hier", "bei uns", "im system", "in unserem system", "auf dem server",
    "auf diesem server", "auf unserem server", "endgültig", "dauerhaft", "meer", "op de server",
    "op deze", "in ons systeem", "definitief",
    // Scandinavian
    "på ", "på denna server", "på denne server", "längre", "lenger", "længere", "permanent",
    // Romance
    "sur ce", "ici", "chez nous", "sur le serveur", "sur notre serveur", "dans le syst",
    "dans notre syst", "dans nos s", "définitivement", "definitivement", "más", "mas ", "aquí",
    "en este", "en el servidor", "en el sistema", "en nuestro servidor", "en nuestro sistema",
    "definitivamente", "permanentemente", "mais", "aqui", "neste", "no servidor", "no sistema",
    "em nosso servidor", "em nosso sistema", "più", "qui", "su questo", "sul server", "sul sistema",
    "nel sistema", "sul nostro server", "nel nostro sistema", "pe acest",
    // Slavic
    "już", "na serwerze", "na tym serwerze", "w systemie", "w naszym systemie", "definitywnie",
    "na serveru", "na tomto serveru", "v systému", "v našem systému", "на этом", "на этом сервере",
    "на сервере", "на данном сервере", "на нашем сервере", "в системе", "в нашей системе",
    "на цьому",
    // Hungarian, Greek, Vietnamese
    "ezen a", "πλέον", "trên ",
});
/// What says behind such words, even clear ones, that it is so for the moment, or of something else.
inline constexpr auto otherEnds = std::to_array<std::string_view>({
    // For the moment
    "at this time", "at this moment", "at this point", "at the moment", "at present", "right now",
    "for now", "during", "while", "until", "yet", "im moment", "zur zeit", "derzeit", "momentan",
    "pour le moment", "en este momento", "neste momento", "no momento", "per il momento", "ancora",
    "todav", "ainda",
    // A list or another place
    "in this list", "on this list", "from the list", "from your list", "dari daftar",
    "on this blacklist", "in blacklist", "in the blacklist", "in whitelist", "in this whitelist",
    "in the whitelist", "in the allow", "in the archive", "in archive", "in cache", "in the cache",
    "from the cache", "in header", "in the header", "na liscie", "na liście", "в списке",
    "в белом списке", "в черном списке",
    // What belongs to a mailbox, or to all of them
    "database", "directory server", "store", "table", "server", "settings", "policy", "quota",
    "script", "certificate", "key", "license", "agent", "group", "network", "gateway", "connection",
    "format",
    // For some only
    "for external", "for people", "for outside", "for non-", "for pop", "for imap", "for smtp",
    "for auth", "for login", "for logon", "hierf", "für externe", "fuer externe",
    // The sender, or what a sender may do
    "for the sender", "for this sender", "for sender", "of sender", "of the sender", "as a sender",
    "as sender", "in sender", "in the sender", "in from", "of originator", "of the originator",
    "for mail from", "for messages from", "to mail from", "to messages from", "may send",
    "may post", "to send", "to post", "to relay", "for relay", "for sending", "remitente",
    "de remitente", "del remitente", "remetente", "do remetente", "отправител", "de salida",
    "de saida", "de saída", "autentic", "con permiso", "com permiss",
    // Another cause
    "or reject", "or refus", "or block", "or denied", "or denies", "or restrict", "or is full",
    "or full", "or mailbox full", "or over quota", "or temporar", "or not allowed",
    "or not permitted", "or you", "or access", "or spam", "or may", "by signal", "quindi",
    // A guess
    "?", "可能性",
});
/// What the phrases of closed mailboxes hold that may open again, or that only take no mail.
inline constexpr auto passingWords = std::to_array<std::string_view>(
    {"lock", "hold", "gesperrt", "suspen", "sospes", "temporar", "receiv", "accepting", "used", "in use",
     "utilise", "gebruik", "suppress", "activit", "actividad", "atividade", "not activated", "blok", "заблок",
     "приостан", "冻结", "khoa", "dormant"});
/// The sender's addresses, and logins, in front of a colon and the words that are said of them.
inline constexpr auto otherSubjects = std::to_array<std::string_view>({
    // Header fields and commands
    "from", "reply-to", "return-path", "envelope-from", "errors-to", "x-sender",
    "disposition-notification-to", "helo", "ehlo", "login", "auth", "sasl",
    // The sender
    "sender", "absender", "afzender", "avsändare", "afsender", "avsender", "expéditeur",
    "remitente", "remetente", "mittente", "nadawca", "odesílatel", "отправитель", "Отправитель",
});
/// What may stand behind those, in front of the colon: "Sender address:".
inline constexpr auto subjectEnds = std::to_array<std::string_view>({"address", "adresse", "header", "domain", "user"});
/// What makes an address something else than a mailbox as the first part of its word:
/// "Host-Adresse".
inline constexpr auto otherParts = std::to_array<std::string_view>(
    {"ip", "host", "server", "web", "internet", "helo", "absender", "rücksende"});

}  // namespace bouncecheck
