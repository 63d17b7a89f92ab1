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

/// What they call it in front of a whole address, but not of a name.
inline constexpr std::string_view addressNames[] = {
    "address",
};

/// What a sentence of another language calls a mailbox, or who has it, where it begins with that:
/// "La cuenta no existe". Without articles; as ReplyText has them.
inline constexpr std::string_view mailboxSubjects[] = {
    // English, where the words are about nothing else
    "alias", "recipient's mailbox", "recipients mailbox", "recipient mailbox",
    "recipient's account", "recipient account", "user's mailbox", "user mailbox", "user's account", "user account",
    "email account", "e-mail account", "mail account",
    // German, Dutch
    "benutzer", "benutzerkennung", "kennung", "nutzer", "teilnehmer", "de gebruiker", "de ontvanger", "de mailbox", "de postbus", "de gebruikersnaam",
    "de mailbox van de ontvanger", "empfanger", "empfaenger", "empfangeradresse", "postfach", "mailbox",
    "konto", "account", "adresse", "e-mail-adresse", "email-adresse", "mailadresse", "e-mail-konto",
    "benutzerkonto", "mailkonto", "postfach des empfangers", "mailbox des empfangers",
    "adresse des empfangers", "konto des empfangers", "benutzername", "mailaccount", "e-mail-account",
    "e-mail-postfach", "email-postfach", "gebruiker", "ontvanger", "geadresseerde", "gebruikersnaam", "adres",
    "e-mailadres", "emailadres", "e-mailaccount", "postvak", "postbus", "mailbox van de ontvanger",
    "postvak van de ontvanger", "adres van de ontvanger",
    // French
    "utilisateur", "destinataire", "boite aux lettres", "boite mail", "boite e-mail", "boite de reception",
    "boite de messagerie", "boite de courrier", "adresse e-mail", "adresse email", "adresse mail",
    "adresse electronique", "adresse de messagerie", "adresse de courriel", "adresse courriel",
    "adresse de destination", "adresse du destinataire", "boite du destinataire",
    "boite aux lettres du destinataire", "boite de reception du destinataire", "compte", "compte e-mail",
    "compte email", "compte de messagerie", "compte utilisateur", "compte du destinataire",
    "nom d'utilisateur",
    // Spanish, Portuguese, Italian
    "usuario", "destinatario", "buzon", "buzon de correo", "buzon del destinatario", "casilla",
    "casilla de correo", "cuenta", "cuenta de correo", "cuenta de correo electronico", "cuenta de email",
    "cuenta de usuario", "cuenta del destinatario", "direccion", "direccion de correo",
    "direccion de correo electronico", "direccion de email", "direccion de e-mail", "direccion de destino",
    "direccion del destinatario", "nombre de usuario", "utilizador", "caixa postal", "caixa de correio",
    "caixa de correio eletronico", "caixa de e-mail", "caixa de email", "caixa de entrada",
    "caixa postal do destinatario", "conta", "conta de e-mail", "conta de email", "conta de correio",
    "conta de usuario", "conta do destinatario", "endereco", "endereco de e-mail", "endereco de email",
    "endereco de correio", "endereco de correio eletronico", "endereco de destino", "endereco eletronico",
    "endereco do destinatario", "nome de usuario", "utente", "casella", "casella di posta",
    "casella di posta elettronica", "casella e-mail", "casella email", "casella postale",
    "casella del destinatario", "casella di posta del destinatario", "indirizzo", "indirizzo e-mail",
    "indirizzo email", "indirizzo mail", "indirizzo di posta", "indirizzo di posta elettronica",
    "indirizzo di destinazione", "indirizzo del destinatario", "account di posta", "account e-mail",
    "nome utente",
    // Slavic
    "uzytkownik", "odbiorca", "skrzynka", "skrzynka odbiorcy", "skrzynka pocztowa", "skrzynka e-mail",
    "skrzynka mailowa", "konto pocztowe", "konto e-mail", "konto uzytkownika", "konto odbiorcy",
    "adres e-mail", "adres email", "adres odbiorcy", "adres pocztowy", "nazwa uzytkownika", "uzivatel",
    "prijemce", "schranka", "postovni schranka", "e-mailova schranka", "emailova schranka",
    "schranka prijemce", "ucet", "e-mailovy ucet", "emailovy ucet", "uzivatelsky ucet", "postovni ucet",
    "ucet prijemce", "adresa", "e-mailova adresa", "emailova adresa", "adresa prijemce", "pouzivatel",
    "prijemca", "пользователь", "получатель", "почтовый ящик", "ящик", "ящик получателя",
    "почтовый ящик получателя", "адрес", "почтовый адрес", "адрес получателя", "адрес электронной почты",
    "электронный адрес", "почтовый аккаунт", "учетная запись", "учётная запись", "учетная запись получателя",
    "учетная запись пользователя", "аккаунт", "потребителят", "користувач", "користувача", "отримувач",
    "отримувача", "одержувач", "одержувача", "поштова скринька", "поштову скриньку", "скриньку", "скринька",
    "скринька отримувача", "скринька одержувача", "електронна адреса", "адреса електронної пошти",
    "адресу електронної пошти", "адреса отримувача", "адреса одержувача", "адреса", "адресу",
    "обліковий запис", "korisnik", "primatelj", "primalac", "uporabnik", "adresat", "адресат", "адресата",
    // Danish, Norwegian, Swedish
    "bruger", "brugeren", "brugerkontoen", "modtager", "modtageren", "postkassen", "postkasse", "mailboksen",
    "mailboks", "indbakken", "modtagerens postkasse", "modtagerens mailboks", "modtagerens adresse",
    "modtageradressen", "modtageradresse", "adressen", "e-mail-adressen", "e-mailadressen", "emailadressen",
    "mailadressen", "mailkontoen", "e-mailkontoen", "kontoen", "bruker", "brukeren", "brukerkontoen",
    "mottaker", "mottakeren", "postboksen", "postboks", "innboksen", "mottakerens postboks",
    "mottakerens adresse", "mottakeradressen", "e-postadressen", "e-postadresse", "epostadressen",
    "e-postkontoen", "e-postkassen", "anvandare", "anvandaren", "anvandarkontot", "mottagare", "mottagaren",
    "brevladan", "e-postladan", "inkorgen", "mottagarens brevlada", "mottagarens adress", "mottagarens konto",
    "mottagarens e-postadress", "mottagaradressen", "adress", "e-postadress", "e-postkontot", "kontot",
    // Finnish, Estonian, Hungarian, Romanian, Turkish
    "kasutaja", "kasutajat", "aadress", "aadressi", "postkast", "postkasti",
    "kayttaja", "kayttajaa", "kayttajatili", "kayttajatunnus", "kayttajatunnusta", "vastaanottaja",
    "vastaanottajaa", "postilaatikko", "postilaatikkoa", "osoite", "osoitetta", "sahkopostiosoite",
    "sahkopostiosoitetta", "sahkopostitili", "sahkopostitilia", "tili", "tilia", "vastaanottajan osoite",
    "vastaanottajan osoitetta", "vastaanottajan postilaatikko", "vastaanottajan postilaatikkoa",
    "felhasznalo", "felhasznalonev", "felhasznaloi fiok", "cimzett", "cimzett cime", "cimzett postafiokja",
    "cimzett e-mail cime", "postafiok", "cim", "e-mail cim", "e-mail-cim", "email cim", "fiok", "e-mail fiok",
    "email fiok", "postalada", "utilizatorul", "utilizator", "destinatarul", "destinatar", "cont", "contul",
    "contul de e-mail", "contul de email", "contul de utilizator", "contul destinatarului", "cont de e-mail",
    "adresa de e-mail", "adresa de email", "adresa destinatarului", "casuța poștala", "casuța de e-mail",
    "casuța de email", "casuța poștala a destinatarului", "cutia poștala", "cutie poștala",
    "cutia poștala a destinatarului", "casuta postala", "cutia postala", "kullanici", "kullanici adi",
    "kullanici hesabi", "alici", "alici adresi", "alicinin adresi", "alicinin posta kutusu",
    "alici posta kutusu", "posta kutusu", "e-posta adresi", "eposta adresi", "e-posta hesabi",
    "e-posta kutusu", "mail adresi", "email adresi", "hesap", "posta hesabi",
    // Greek, Indonesian, Vietnamese, Hebrew, Arabic
    "χρήστης", "παραλήπτης", "λογαριασμός", "λογαριασμός χρήστη", "λογαριασμός email", "λογαριασμός e-mail",
    "λογαριασμός του παραλήπτη", "διεύθυνση", "διεύθυνση email", "διεύθυνση e-mail",
    "διεύθυνση ηλεκτρονικού ταχυδρομείου", "διεύθυνση παραλήπτη", "διεύθυνση του παραλήπτη",
    "γραμματοκιβώτιο", "γραμματοκιβώτιο του παραλήπτη", "θυρίδα", "pengguna", "alamat", "alamat email",
    "penerima", "alamat penerima", "kotak surat", "akun", "người dung", "người nhận", "ten người dung",
    "dịa chỉ", "dịa chỉ email", "dịa chỉ e-mail", "dịa chỉ email nay", "dịa chỉ e-mail nay",
    "dịa chỉ người nhận", "dịa chỉ email người nhận", "hộp thư", "hộp thư nay", "hộp thư người nhận",
    "hộp thư của người nhận", "tai khoản", "tai khoản nay", "tai khoản email", "tai khoản người dung",
    "tai khoản người nhận", "המשתמש", "הכתובת", "المستخدم", "العنوان",
    // Chinese, Japanese, Korean, whose particles belong to what is said
    "用户", "该用户", "此用户", "邮箱用户", "收件人", "该收件人", "收件人邮箱", "收件人账号", "收件人帐号", "收件人地址", "收信人", "邮箱", "该邮箱", "此邮箱",
    "对方邮箱", "目标邮箱", "您发送的邮箱", "邮箱地址", "该邮箱地址", "邮箱帐号", "邮箱账号", "邮件地址", "电子邮件地址", "地址", "该地址", "帐号", "该帐号",
    "账号", "该账号", "账户", "该账户", "使用者", "該使用者", "收件者", "該收件者", "收件者信箱", "收件者地址", "收件人信箱", "收件人郵箱", "信箱", "該信箱",
    "此信箱", "電子信箱", "郵箱", "電子郵件地址", "郵件地址", "電郵地址", "帳號", "該帳號", "帳戶", "該帳戶", "用戶", "該用戶", "ユーザー", "ユーザ",
    "このユーザー", "指定されたユーザー", "該当ユーザー", "受信者", "受信者のアドレス", "受信者のメールアドレス", "宛先", "宛先アドレス", "宛先メールアドレス",
    "宛先のメールアドレス", "送信先アドレス", "送信先メールアドレス", "送信先のメールアドレス", "メールアドレス", "このメールアドレス", "指定されたメールアドレス",
    "ご指定のメールアドレス", "アドレス", "このアドレス", "アカウント", "このアカウント", "メールボックス", "사용자", "해당 사용자", "수신자", "수신인", "받는 사람",
    "수신자 주소", "수신자 계정", "수신자의 메일함", "메일 계정", "해당 계정", "계정", "이메일 계정", "이메일 주소", "메일 주소", "해당 메일 주소",
    "해당 이메일 주소", "이메일", "메일함", "사서함", "편지함",
};

}  // namespace bouncecheck
