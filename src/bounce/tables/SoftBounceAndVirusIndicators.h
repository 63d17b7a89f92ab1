#pragma once

#include <cstddef>

namespace bouncecheck {

/// Phrases of temporary failures and, behind them, of virus and content
/// scanners. A search for a temporary failure runs on through the scanners'
/// phrases: a message that a scanner refused may get through another day.
inline constexpr const char* const softBounceAndVirusPhrases[] = {
    "lease try again later",
    "aximum DNS-interactive terms limit",
    "mail system is currently down",
    "Mailbox is inactive",
    "Unable to relay",
    "Unable to relay",
    "Too many invalid recipients",

    // Phrases of scanners.
    "Virus Warning Message",
    "detected virus-infected attachments",
    "MailMarshal has stopped the following message",
    "infected with VIRUS",
    "Antivirus: McAfee Scanning Engine",
    "contained the virus",
    "has detected virus",
    "Network Associates WebShield",
    "contains a virus.",
    "A Disallowed attachment type was found",
    "blocked due to a virus being detected",
    "had attachment(s) which contained viruses",
    "Our virus detector has just been triggered",
    "Recipient of the infected attachment",
    "The mail was not delivered because it contained dangerous code",
    "Our viruschecker found",
    "Our viruschecker found a VIRUS in your email to",
    "The mail message (*) you sent to * contains a virus",
    "A virus was found in an Email message you sent.",
    "Inbound Virus Found",
    "Symantec AVF detected",
    "Virus identity found:",
    "pois ele pode estar contaminado",
    "following message contained restricted attachment",
    "Our virus checker found",
    "message sent by you was quarantined",
    "The infected component in the",
    "attachments are not allowed to pass",
    "Aviso do Panda Antivirus",
    "Returned due to a virus",
    "ScanMail has found a virus",
    "ALERTA de VIRUS",
    "refuse some attachement:",
    "BitDefender found",
    "Email scanner intercepted",
    "Problem: Virus found",
    "W32/Netsky",
    "McAfee Scanning Engine",
    "message contains a virus",
    "prohibited attachments",
    "Ein virus wurde",
    "Viruses found in the attached files",
    "Virus attachment file",
    "Symantec AntiVirus found a virus",
    "Violacion de Contenido",
    "FILES DETECTED -",
    "Un virus fue encontrado en un mensaje",
    "Antigen found",
    "Disallowed attachment type in",
    "alert from eSafe",
    "ATTENZIONE POSSIBILE VIRUS",
    "Attenzione: rilevata E-mail infetta",
    "Norton antivirus passerelle",
    "VIRUS NA SUA MENSAGEM",
    "VIRUS EN SU CORREO",
    "VIRUS IN YOUR MAIL",
    "SAV detected a violation",
    "antivirus system report",
    "found a VIRUS in",
    "virus: Worm.",
    "virus was detected",
    "message has been quarantined by InterScan",
    "]Security Notification",
    "MDaemon has detected restricted",
    "E-mail viruses detected",
    "GFI MailSecurity",
    "detected a threat",
    "",
};

inline constexpr std::size_t softBouncePhraseCount = 7;

inline constexpr const char* const* SoftBounceIndicators = softBounceAndVirusPhrases;
inline constexpr const char* const* VirusIndicators =
    softBounceAndVirusPhrases + softBouncePhraseCount;

}  // namespace bouncecheck
