#pragma once

#include <array>
#include <string_view>

namespace bouncecheck {

/// Words of the sentences that say something of a mailbox, as they are written; ASCII letters in
/// either case.

/// What may stand between a name and what is said of it.
inline constexpr auto linkWords = std::to_array<std::string_view>(
    {"is",   "has", "have",  "been",   "was",    "are",   "currently", "temporarily", "permanently",
     "does", "do",  "could", "can",    "cannot", "be",    "foi",       "sido",        "ha",
     "esta", "est", "stato", "ist",    "wird",   "wurde", "es",        "é",           "è",
     "är",   "er",  "jest",  "konnte", "leider", "ya",    "já",
     "zostało", "została", "został", "już", "již", "je", "kon", "werd", "kunde", "kunne", "har",
     "este", "fue", "blev", "ble", "byl", "byla", "bylo", "zostala", "zostal", "είναι", "már", "véglegesen", "artık", "был", "была", "больше", "був", "була", "більше",
     // and what is added to the name
     "indicada", "indicado", "indicato", "informado", "informada", "especificada", "especificado",
     "specificato", "specified", "provided", "angegeben"});
/// The same, between a host's address and what is said of it.
inline constexpr auto hostLinkWords =
    std::to_array<std::string_view>({"from", "for", "ip", "address", "host", "client", "server",
                                     "your", "the", "access", "connection", "adresse"});

/// What may stand in front of "user ann", or "domain x.example", where these are the subject.
inline constexpr auto articles = std::to_array<std::string_view>(
    {"the",    "a",      "an",  "this", "that", "der", "die",   "das", "dieser", "diese", "dieses",
     "el",     "la",     "le",  "o",    "il",   "lo",  "cette", "ce",  "cet",    "esta",  "este",
     "questo", "questa", "dit", "deze", "het",  "et",  "az",    "ten", "ta",     "to",    "этот",
     "Этот", "эта", "Эта", "ese", "esa", "esse", "essa", "denne", "dette", "denna", "detta", "den", "det", "ez",
     "tento", "tato", "bu", "acest", "această", "цей", "Цей", "ця", "Ця", "ο", "Ο", "η", "Η", "το", "Το"});
/// What stands between something and those whose it is.
inline constexpr auto genitives = std::to_array<std::string_view>(
    {"of", "for", "de", "des", "du", "del", "della", "do", "da", "von", "van", "für", "pour", "para", "per",
     "with", "mit", "avec", "con", "com", "til", "för", "im"});
/// What may be somebody's that is gone with them, beside the names of mailboxes.
inline constexpr auto addressWords = std::to_array<std::string_view>(
    {"address", "e-mail", "email", "mail", "message", "delivery", "adresse", "boîte", "boite", "buzón", "buzon",
     "casilla", "réception", "dirección", "direccion", "caixa", "endereço", "endereco", "casella", "indirizzo", "adres",
     // or what was refused for that
     "rcpt", "rejected", "refused", "bounced", "returned", "responded", "replied"});
/// What else may stand in front of somebody's address: "Key ann@x.example not found".
inline constexpr auto namedThings = std::to_array<std::string_view>(
    {"key", "certificate", "license", "licence", "subscription", "entry", "record", "rule", "policy", "filter", "quota",
     "script", "schlüssel", "zertifikat", "lizenz", "clave", "certificado", "licencia", "chave", "licença", "clé",
     "certificat", "chiave", "certificato", "ключ", "Ключ", "сертификат", "Сертификат",
     // or what else than a mail system has users
     "proxy", "relay", "login", "auth", "bind", "database"});
/// What a reply may begin with that is no mailbox, though some are called so; also, of what leads
/// "to" a mailbox, what is not gone with it: "Connection to ann@x.example was closed".
inline constexpr auto notMailboxes = std::to_array<std::string_view>(
    {"mail", "email", "e-mail", "post", "message", "nachricht", "service", "server", "host", "connection", "access",
     "session", "delivery", "forwarding", "subscription"});
/// What may stand between those and a mailbox.
inline constexpr auto attributes = std::to_array<std::string_view>(
    {"angegebene", "adressierte", "gewünschte", "specified", "given", "destination", "opgegeven", "angivna", "podany", "указанный",
     "Указанный", "virtual", "local", "following", "почтовый", "Почтовый", "данный", "Данный", "вказана", "Вказана", "här",
     "oppgitte", "angivne", "podana", "podane", "zadaná", "zadaný", "megadott", "belirtilen"});
/// What may stand in front of the name of a kind, "email account", and behind it, "user ID".
inline constexpr auto kindStarts = std::to_array<std::string_view>({"email", "e-mail", "mail"});
inline constexpr auto kindEnds = std::to_array<std::string_view>({"id", "name", "address", "adresse"});
/// What clauses begin with, in front of that.
inline constexpr auto openers = std::to_array<std::string_view>(
    {"because", "since",  "as",       "that",    "but",       "sorry", "weil",
     "dass",    "denn",   "omdat",    "dat",     "car",       "que",   "porque",
     "pois",    "perché", "ponieważ", "protože", "поскольку", "что"});
/// What clauses begin with that only suppose something: "if the mailbox was deleted".
inline constexpr auto conditions = std::to_array<std::string_view>(
    {"if", "when", "whether", "unless", "assuming", "should", "case", "wenn", "falls", "sofern", "ob", "si", "se", "cuando", "quando",
     "lorsque", "indien", "wanneer", "jeśli", "если", "Если", "когда", "Когда",
     // guesses
     "perhaps", "maybe", "possibly", "probably", "possible", "mean", "vielleicht", "eventuell", "möglicherweise", "peut-être",
     "quizás", "talvez", "forse", "misschien", "возможно", "Возможно"});
/// The same, in languages that put no space behind.
inline constexpr auto joinedConditions = std::to_array<std::string_view>({"如果", "若", "假如", "もし", "만약"});
/// Who does not know a mailbox, in front of the words that say so.
inline constexpr auto pronouns = std::to_array<std::string_view>({"i", "we"});
/// What may end a sentence behind what is said, in front of a stop.
inline constexpr auto closings = std::to_array<std::string_view>(
    {"here", "any more", "anymore", "any longer", "on this", "at this", "in this", "locally",
     // the same in other languages
     "mehr", "hier", "más", "mas ", "en este", "aquí", "mais", "neste", "aqui", "più", "qui",
     "meer", "sur ce", "ici", "на этом", "på ", "on our server", "on our system", "on any of our", "auf diesem server",
     "auf unserem server", "bei uns", "sur notre serveur", "dans notre syst", "en nuestro servidor",
     "em nosso servidor", "sul nostro server", "na tym serwerze", "na tomto serveru", "на данном сервере",
     "на нашем сервере", "på denna server", "på denne server", "längre", "lenger", "længere", "chez nous",
     "su questo", "op deze", "pe acest", "ezen a", "на этом сервере",
     "in the alias", "in our system", "in our records", "in our directory", "in our user", "from the system",
     "from our system", "from this server", "from this system",
     "from our server", "from the server", "and no longer", "and is no longer",
     "and can no longer", "em nosso sistema", "en nuestro sistema", "nel nostro sistema", "in unserem system",
     "w naszym systemie", "v našem systému", "в нашей системе", "dans nos s", "in ons systeem",
     "on the server", "auf dem server", "sur le serveur", "en el servidor", "no servidor", "sul server", "na serwerze",
     "na serveru", "на сервере", "op de server", "in the system", "on the system", "in the post office", "by our system", "by this system",
     "by our server", "by this server", "(in reply to rcpt", "of this host",
     "of this server", "of this system", "im system", "dans le syst",
     "en el sistema", "no sistema", "nel sistema", "sul sistema", "w systemie", "v systému", "в системе",
     "permanently", "for good", "endgültig", "dauerhaft", "définitivement", "definitivement", "definitivamente",
     "permanentemente", "definitief", "definitywnie", "permanent", "на цьому", "trên ", "πλέον", "już"});
/// What says behind such words, even clear ones, that it is so for the moment, or of something else.
inline constexpr auto otherEnds = std::to_array<std::string_view>(
    {"at this time", "at this moment", "at this point", "in this list", "on this list", "on this blacklist",
     "in this whitelist", "in the whitelist", "in whitelist", "in the archive", "in archive", "hierf", "en este momento", "neste momento", "quindi",
     "at the moment", "at present", "right now", "for now", "during", "while", "by signal", "im moment", "zur zeit",
     "derzeit", "momentan", "pour le moment", "per il momento", "no momento", "for the sender", "for external", "for people", "for outside", "for non-",
     "for mail from", "for messages from", "to mail from", "to messages from", "for pop", "for imap", "for smtp",
     "for sending", "für externe", "fuer externe", "from the list", "from your list", "from the cache", "dari daftar",
     "in blacklist", "in the blacklist", "in sender", "in the sender", "in header", "in the header", "in cache", "in the cache",
     // what belongs to a mailbox, or to all of them
     "database", "directory server", "store", "table", "server", "settings", "policy", "quota", "script",
     "certificate", "key", "license", "agent", "group", "network", "gateway", "connection", "format",
     // another cause
     "or reject", "or refus", "or block", "or denied", "or denies", "or restrict", "or is full", "or full", "or mailbox full",
     "or over quota", "or temporar", "or not allowed", "or not permitted", "or you", "or access", "or spam", "or may",
     // who may do what
     "may send", "may post", "to send", "to post", "to relay", "for relay", "for this sender", "for sender", "of sender", "of the sender", "as a sender", "as sender",
     "in from", "of originator", "of the originator", "in the allow", "de remitente", "de salida", "de saida", "de saída",
     "remitente", "del remitente", "remetente", "do remetente", "autentic", "con permiso",
     "com permiss", "na liscie", "na liście", "в списке", "в белом списке", "в черном списке", "отправител",
     // or that it may be otherwise later, or now
     "?", "until", "yet", "ancora", "todav", "ainda", "可能性"});
/// What the phrases of closed mailboxes hold that may open again, or that only take no mail.
inline constexpr auto passingWords = std::to_array<std::string_view>(
    {"lock", "hold", "gesperrt", "suspen", "sospes", "temporar", "receiv", "accepting", "used", "in use",
     "utilise", "gebruik", "suppress", "activit", "actividad", "atividade", "not activated", "blok", "заблок",
     "приостан", "冻结", "khoa", "dormant"});
/// The sender's addresses, and logins, in front of a colon and the words that are said of them.
inline constexpr auto otherSubjects = std::to_array<std::string_view>(
    {"sender", "from", "reply-to", "return-path", "envelope-from", "helo", "ehlo", "absender", "expéditeur",
     "remitente", "remetente", "mittente", "afzender", "nadawca", "odesílatel", "avsändare", "afsender",
     "avsender", "отправитель", "Отправитель", "errors-to", "x-sender", "disposition-notification-to", "login", "auth", "sasl"});
/// What may stand behind those, in front of the colon: "Sender address:".
inline constexpr auto subjectEnds = std::to_array<std::string_view>({"address", "adresse", "header", "domain", "user"});
/// What makes an address something else than a mailbox as the first part of its word:
/// "Host-Adresse".
inline constexpr auto otherParts = std::to_array<std::string_view>(
    {"ip", "host", "server", "web", "internet", "helo", "absender", "rücksende"});

}  // namespace bouncecheck
