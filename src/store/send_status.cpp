// The texts of the send status codes. Their spelling is that of the server's own lists and stays, odd words
// and blanks included.
#include <array>

#include "store/vocabulary.h"

namespace velmora::store {
namespace {

constexpr SendStatusText Unknown = {true, "unknown error", "unbekannter Fehler"};

// The row is the status.
constexpr auto SendStatusTexts = std::to_array<SendStatusText>({
    {false, "sent", "versendet"},                                            // 0
    Unknown,                                                                 // 1
    {true, "nicht im Intervall", "nicht im Intervall"},                      // 2
    {true, "IHS Zugang abgelaufen", "IHS Zugang abgelaufen"},                // 3
    Unknown,                                                                 // 4
    Unknown,                                                                 // 5
    Unknown,                                                                 // 6
    Unknown,                                                                 // 7
    Unknown,                                                                 // 8
    Unknown,                                                                 // 9
    {true, "unknown hardware problem", "unbek. Hardwareproblem"},            // 10
    {true, "nothing to poll", "nichts zu pollen"},                           // 11
    {true, "unknown error at distant station", "unbek. F.b. Gegenstelle"},   // 12
    Unknown,                                                                 // 13
    {true, "Kanal nicht verfügbar", "Kanal nicht verfügbar"},                // 14
    {true, "Zeitüberschneidung", "Zeitüberschneidung"},                      // 15
    {true, "Unzeitgemäß", "Unzeitgemäß"},                                    // 16
    Unknown,                                                                 // 17
    Unknown,                                                                 // 18
    Unknown,                                                                 // 19
    {true, "dial error", "Fehler beim Wählen"},                              // 20
    {true, "busy", "belegt"},                                                // 21
    {true, "no fax machine", "kein Faxgerät"},                               // 22
    {true, "no response", "keine Antwort"},                                  // 23
    {true, "no dial tone", "kein Freizeichen"},                              // 24
    {true, "wrong Number", "Nummer falsch"},                                 // 25
    {true, "dial Locked", "Wählvorgang gesperrt"},                           // 26
    {true, "baud rate too low", "Baudrate zu niedrig"},                      // 27
    {true, "no response from distant", "Empfänger hebt nicht ab"},           // 28
    {true, "unknown error(dial)", "unbekannter Fehler (Wählen)"},            // 29
    {true, "communication error", "Fehler b. Kommunikation"},                // 30
    {true, "transmission error", "Übertragungsfehler"},                      // 31
    {true, "error at end of page", "Fehler bei Seitenende"},                 // 32
    {true, "error on page", "Fehler auf Seite"},                             // 33
    {true, "Image Not found", "TXfile nicht zu öffnen"},                     // 34
    {true, "incorrect file format", "falsches Dateiformat"},                 // 35
    {true, "lost carrier", "Carrier verloren"},                              // 36
    {true, "break by user", "Benutzerabbruch"},                              // 37
    Unknown,                                                                 // 38
    {true, "unknown error(sending)", "unbek. Fehler (Senden)"},              // 39
    Unknown,                                                                 // 40
    {true, "Gegenstelle ausser Betrieb", "Gegenstelle ausser Betrieb"},      // 41
    {true, "Kein Verbindungsweg", "Kein Verbindungsweg"},                    // 42
    {true, "Mail Server nicht erreichbar", "Mail Server nicht erreichbar"},  // 43
    {true, "Authentifizierungsfehler", "Authentifizierungsfehler"},          // 44
    {true, "Ungültige Prüfsumme", "Ungültige Prüfsumme"},                    // 45
    {true, "Fehler bei DFÜ-Verbindung", "Fehler bei DFÜ-Verbindung"},        // 46
    Unknown,                                                                 // 47
    Unknown,                                                                 // 48
    Unknown,                                                                 // 49
    {true, "error at end of fax ", "Faxende fehlerhaft"},                    // 50
    {true, "break at distant station", "Abbruch Gegenstelle"},               // 51
    {true, "no carrier", "kein Träger"},                                     // 52
    {true, "keine TLS Verbindung möglich", "keine TLS Verbindung möglich"},  // 53
    {true, "keine VPMN Gegenstelle", "keine VPMN Gegenstelle"},              // 54
    Unknown,                                                                 // 55
    Unknown,                                                                 // 56
    Unknown,                                                                 // 57
    Unknown,                                                                 // 58
    {true, "problem at end of fax", "Problem bei Faxende"},                  // 59
    {false, "fax box document", "FaxBox Dokument"},                          // 60
    {false, "Request report", "Anforderungsreport"},                         // 61
    {true, "unknown receiver", "Unbekannter Empfänger"},                     // 62
    {false, "add to container", "in Sammlung übernommen"},                   // 63
    {true, "number of Robinsonliste", "Verbindung unzulässig"},              // 64
    {true, "graphic import error", "Fehler b. Grafikimport"},                // 65
    {false, "internal Command", "interner Befehl"},                          // 66
    {true, "PCL-Convert command error", "PCL-Konvertierungsfehler"},         // 67
    {true, "invalid command lenght", "ungültige Befehlslänge"},              // 68
    Unknown,                                                                 // 69
    {true, "Broadcast Not File", " Rundsendedatei fehlt"},                   // 70
    {false, "printed", "Ausdruck"},                                          // 71
    {false, "Document", "Dokument"},                                         // 72
    {true, "Dateianhang nicht gefunden", "Dateianhang nicht gefunden"},      // 73
    {true, "Unerlaubte externe Adresse", "Unerlaubte externe Adresse"},      // 74
    {true, "Unerlaubte Rundsendung", "Unerlaubte Rundsendung"},              // 75
    {false, "Auftrag", "Auftrag"},                                           // 76
    {true, "ungültige Prüfsumme", "ungültige Prüfsumme"},                    // 77
    {true, "unerlaubte Anzahl Adressen", "unerlaubte Anzahl Adressen"},      // 78
    {true, "Mailbox voll", "Mailbox voll"},                                  // 79
    {true, "no FaxPlus distant station", "keine FaxPlus Gegenst."},          // 80
    {true, "FaxPlus training error", "F.b. FaxPlus-Training"},               // 81
    Unknown,                                                                 // 82
    {true, "invalid Address", "Mail-Adresse ungültig"},                      // 83
    {true, "Domain Not found", "Domäne nicht gefunden"},                     // 84
    {true, "Falscher Absender", "Falscher Absender"},                        // 85
    {true, "Falsche Kennung der Gegenst.", "Falsche Kennung der Gegenst."},  // 86
    {true, "Virus in Dateianhang", "Virus in Dateianhang"},                  // 87
    {true, "Zu wenig Speicher", "Zu wenig Speicher"},                        // 88
    {true, "Nachrichtentext fehlt", "Nachrichtentext fehlt"},                // 89
    {true, "no Number", "Nummer fehlt"},                                     // 90
    {true, "invalid Line", "ungültiger Port"},                               // 91
    {true, "Bad Command", "unbekannter Befehl"},                             // 92
    {true, "TLD removed", "TLD wurde entfernt"},                             // 93
    {true, "port already acquired", "Port ist bereits belegt"},              // 94
    {true, "failed to configure port", "Fehler bei Port-Init."},             // 95
    {true, "error COM ext.Control", "Fehler bei Ext. Control"},              // 96
    {true, "Dateianhänge", "Dateianhänge"},                                  // 97
    {true, "Passwort für Verschlüsselung", "Passwort für Verschlüsselung"},  // 98
    {true, "Bestätigung", "Bestätigung"},                                    // 99
});
static_assert(SendStatusTexts.size() == SendStatusCount);

}  // namespace

SendStatusText SendStatus(std::int64_t status) {
  const bool known = status >= 0 && status < static_cast<std::int64_t>(SendStatusCount);
  return known ? SendStatusTexts[static_cast<std::size_t>(status)] : SendStatusText{};
}

}  // namespace velmora::store
