#pragma once

#include <string_view>

namespace bouncecheck {

/// What replies call a domain in front of its name.
inline constexpr std::string_view domainNames[] = {
    "domain",
    "host",
};

/// What they call a mailbox, or who has it, in front of the name.
inline constexpr std::string_view mailboxNames[] = {
    "user",
    "username",
    "mailbox",
    "account",
    "recipient",
    "receiver",
    "addressee",
    "subscriber",
    "alias",
    "name",
    // the same in other languages
    "benutzer",
    "konto",
    "postfach",
    "empfänger",
    "utilisateur",
    "compte",
    "destinataire",
    "usuario",
    "usuário",
    "cuenta",
    "conta",
    "destinatario",
    "destinatário",
    "utente",
    "gebruiker",
    "użytkownik",
    "пользователь",
    "Пользователь",
    "ящик",
    "Ящик",
    "uživatel",
    "användaren",
    "brukeren",
    "brugeren",
    // as phrases have them, without accents
    "empfanger",
    "uzytkownik",
    "uzivatel",
    "anvandaren",
};

/// What a sentence of another language calls a mailbox, or who has it, where it begins with that:
/// "La cuenta no existe". Without articles; as they are written, ASCII letters in either case.
inline constexpr std::string_view mailboxSubjects[] = {
    // German, Dutch
    "benutzer", "empfänger", "empfaenger", "empfängeradresse", "postfach", "mailbox", "konto", "account", "adresse",
    "e-mail-adresse", "email-adresse", "mailadresse", "e-mail-konto", "benutzerkonto", "mailkonto",
    "postfach des empfängers", "mailbox des empfängers", "adresse des empfängers", "de gebruiker", "de ontvanger",
    "de mailbox", "gebruiker", "ontvanger", "adres", "e-mailadres", "emailadres", "postvak",
    // French
    "utilisateur", "destinataire", "boîte aux lettres", "boite aux lettres", "boîte mail", "boite mail",
    "boîte de réception", "boite de reception", "adresse e-mail", "adresse email", "adresse mail",
    "adresse électronique", "adresse du destinataire", "boîte aux lettres du destinataire", "compte",
    "compte du destinataire",
    // Spanish, Portuguese, Italian
    "usuario", "destinatario", "buzón", "buzon", "buzón de correo", "buzon de correo", "buzón del destinatario",
    "casilla", "casilla de correo", "cuenta", "cuenta de correo", "cuenta de usuario", "dirección", "direccion",
    "dirección de correo", "direccion de correo", "dirección de correo electrónico", "dirección del destinatario",
    "usuário", "utilizador", "destinatário", "caixa postal", "caixa de correio", "caixa postal do destinatário",
    "conta", "conta de e-mail", "conta de email", "endereço", "endereco", "endereço de e-mail", "endereço de email",
    "endereço do destinatário", "utente", "casella", "casella di posta", "casella postale",
    "casella del destinatario", "indirizzo", "indirizzo e-mail", "indirizzo email", "indirizzo del destinatario",
    // Slavic
    "użytkownik", "odbiorca", "skrzynka", "skrzynka odbiorcy", "skrzynka pocztowa", "konto pocztowe", "konto użytkownika", "konto odbiorcy", "adres e-mail",
    "adres odbiorcy", "uživatel", "příjemce", "schránka", "účet", "adresa", "e-mailová adresa", "adresa příjemce",
    "používateľ", "príjemca", "пользователь", "Пользователь", "получатель", "Получатель", "почтовый ящик",
    "Почтовый ящик", "ящик", "Ящик", "адрес", "Адрес", "адрес получателя", "Адрес получателя",
    "учетная запись", "Учетная запись", "аккаунт", "Аккаунт", "потребителят", "Потребителят", "користувача",
    "Користувача", "скриньку", "Скриньку", "скринька", "Скринька", "обліковий запис", "Обліковий запис",
    "korisnik", "primatelj", "primalac", "uporabnik", "adresat", "adresát", "uzytkownik", "uzivatel", "schranka",
    // Danish, Norwegian, Swedish
    "brugeren", "modtageren", "postkassen", "adressen", "e-mail-adressen", "kontoen", "brukeren", "mottakeren",
    "postboksen", "e-postadressen", "användaren", "mottagaren", "brevlådan", "kontot", "anvandaren", "brevladan",
    // Hungarian, Romanian, Turkish, Greek, Indonesian, Vietnamese, Hebrew, Thai
    "felhasználó", "címzett", "postafiók", "cím", "utilizatorul", "destinatarul", "contul", "căsuța poștală",
    "kullanıcı", "alıcı", "posta kutusu", "ο χρήστης", "Ο χρήστης", "η διεύθυνση", "Η διεύθυνση", "ο παραλήπτης",
    "Ο παραλήπτης", "ο λογαριασμός", "Ο λογαριασμός", "pengguna", "alamat", "penerima", "kotak surat",
    "người dùng", "Người dùng", "địa chỉ", "Địa chỉ", "hộp thư", "Hộp thư", "המשתמש", "הכתובת", "المستخدم", "العنوان",
};

}  // namespace bouncecheck
