<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>tessary</name>
    <message>
        <source>Resolutions</source>
        <translation>Auflösungen</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Bildschirm</translation>
    </message>
    <message>
        <source>Not set</source>
        <translation>Nicht festgelegt</translation>
    </message>
    <message>
        <source>Currently {}.</source>
        <translation>Derzeit {}.</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Start Tessary at login</source>
        <translation>Tessary bei der Anmeldung starten</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>Aktualisierungen</translation>
    </message>
    <message>
        <source>Check automatically</source>
        <translation>Automatisch suchen</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>Jetzt suchen</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>Tastenkombinationen</translation>
    </message>
    <message>
        <source>Click, then type a shortcut. Escape cancels, Backspace clears.</source>
        <translation>Klicken, dann eine Tastenkombination drücken. Esc bricht ab, die Rücktaste löscht.</translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation>Standardwerte wiederherstellen</translation>
    </message>
    <message>
        <source>Function keys need one System Settings tweak</source>
        <translation>Funktionstasten erfordern eine Anpassung in den Systemeinstellungen</translation>
    </message>
</context>
<context>
    <name>updates</name>
    <message>
        <source>en</source>
        <translation>de</translation>
    </message>
    <message>
        <source>Tessary Update</source>
        <translation>Tessary-Aktualisierung</translation>
    </message>
    <message>
        <source>Looking for updates…</source>
        <translation>Aktualisierungen werden gesucht …</translation>
    </message>
    <message>
        <source>Tessary %1 is available</source>
        <translation>Tessary %1 ist verfügbar</translation>
    </message>
    <message>
        <source>You have %1. Install downloads the new version (%2), verifies it, and opens it with this computer's package installer. Afterwards quit Tessary and start it again.</source>
        <translation>Sie haben %1. „Installieren“ lädt die neue Version herunter (%2), prüft sie und öffnet sie mit dem Paketinstallationsprogramm dieses Computers. Beenden Sie Tessary danach und starten Sie es neu.</translation>
    </message>
    <message>
        <source>What is new</source>
        <translation>Neuerungen</translation>
    </message>
    <message>
        <source>&amp;Install</source>
        <translation>&amp;Installieren</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <translation>&amp;Später</translation>
    </message>
    <message>
        <source>&amp;Skip This Version</source>
        <translation>Diese Version &amp;überspringen</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>&amp;Try Again</source>
        <translation>&amp;Erneut versuchen</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Downloading %1…</source>
        <translation>%1 wird heruntergeladen …</translation>
    </message>
    <message>
        <source>Opening %1…</source>
        <translation>%1 wird geöffnet …</translation>
    </message>
    <message>
        <source>%1 could not be opened</source>
        <translation>%1 konnte nicht geöffnet werden</translation>
    </message>
    <message>
        <source>%1 could not be downloaded</source>
        <translation>%1 konnte nicht heruntergeladen werden</translation>
    </message>
    <message>
        <source>Tessary is up to date</source>
        <translation>Tessary ist auf dem neuesten Stand</translation>
    </message>
    <message>
        <source>You have %1, and there is nothing newer for this computer.</source>
        <translation>Sie haben %1; etwas Neueres gibt es für diesen Computer nicht.</translation>
    </message>
    <message>
        <source>Tessary could not look for updates</source>
        <translation>Tessary konnte nicht nach Aktualisierungen suchen</translation>
    </message>
    <message>
        <source>The list of updates is damaged.</source>
        <translation>Die Liste der Aktualisierungen ist beschädigt.</translation>
    </message>
    <message>
        <source>The list of updates names an address that is not secure.</source>
        <translation>Die Liste der Aktualisierungen nennt eine Adresse, die nicht sicher ist.</translation>
    </message>
    <message>
        <source>The feed is too large.</source>
        <translation>Die Liste der Aktualisierungen ist zu groß.</translation>
    </message>
    <message>
        <source>The server took too long to send the feed.</source>
        <translation>Der Server hat zu lange gebraucht, um die Liste der Aktualisierungen zu senden.</translation>
    </message>
    <message>
        <source>The address “%1” is not secure.</source>
        <translation>Die Adresse „%1“ ist nicht sicher.</translation>
    </message>
    <message>
        <source>The server redirects too often.</source>
        <translation>Der Server leitet zu oft weiter.</translation>
    </message>
    <message>
        <source>The server redirects to an address that is not secure.</source>
        <translation>Der Server leitet an eine Adresse weiter, die nicht sicher ist.</translation>
    </message>
    <message>
        <source>The server answered %1.</source>
        <translation>Der Server hat mit %1 geantwortet.</translation>
    </message>
    <message>
        <source>The connection ended before everything had come.</source>
        <translation>Die Verbindung endete, bevor alles angekommen war.</translation>
    </message>
    <message>
        <source>The server %1 was not found.</source>
        <translation>Der Server %1 wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>The server %1 cannot be reached.</source>
        <translation>Der Server %1 ist nicht erreichbar.</translation>
    </message>
    <message>
        <source>The server %1 took too long to answer.</source>
        <translation>Der Server %1 hat zu lange nicht geantwortet.</translation>
    </message>
    <message>
        <source>There is no secure connection to %1: %2</source>
        <translation>Es gibt keine sichere Verbindung zu %1: %2</translation>
    </message>
    <message>
        <source>The transfer failed: %1</source>
        <translation>Die Übertragung ist fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>The package is shorter than announced.</source>
        <translation>Das Paket ist kürzer als angekündigt.</translation>
    </message>
    <message>
        <source>The package is larger than announced.</source>
        <translation>Das Paket ist größer als angekündigt.</translation>
    </message>
    <message>
        <source>The downloaded package is not the one that Tessary's developers have signed.</source>
        <translation>Das heruntergeladene Paket ist nicht das, das die Entwickler von Tessary signiert haben.</translation>
    </message>
    <message>
        <source>The version's number makes no sense.</source>
        <translation>Die Versionsnummer ergibt keinen Sinn.</translation>
    </message>
    <message>
        <source>There is too little space for the package in “%1”.</source>
        <translation>In „%1“ ist zu wenig Platz für das Paket.</translation>
    </message>
    <message>
        <source>The package could not be written: %1.</source>
        <translation>Das Paket konnte nicht geschrieben werden: %1.</translation>
    </message>
    <message>
        <source>%1 It was deleted.</source>
        <translation>%1 Es wurde gelöscht.</translation>
    </message>
    <message>
        <source>The folder “%1” cannot be used: %2.</source>
        <translation>Der Ordner „%1“ kann nicht benutzt werden: %2.</translation>
    </message>
    <message>
        <source>it is a link or a file</source>
        <translation>er ist ein Verweis oder eine Datei</translation>
    </message>
    <message>
        <source>it belongs to another user</source>
        <translation>er gehört einem anderen Benutzer</translation>
    </message>
    <message>
        <source>it is no absolute path</source>
        <translation>er ist kein absoluter Pfad</translation>
    </message>
    <message>
        <source>The kind of the package is unknown.</source>
        <translation>Die Art des Pakets ist unbekannt.</translation>
    </message>
    <message>
        <source>The program “%1”, which finds the program for the package, could not be started.</source>
        <translation>Das Programm „%1“, welches das Programm für das Paket findet, konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>No program is registered for this kind of package.</source>
        <translation>Für diese Art von Paket ist kein Programm eingerichtet.</translation>
    </message>
    <message>
        <source>The program for the package could not be started.</source>
        <translation>Das Programm für das Paket konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>%1 The package lies at “%2”.</source>
        <translation>%1 Das Paket liegt unter „%2“.</translation>
    </message>
    <message>
        <source>Updates are not set up in this copy of Tessary.</source>
        <translation>In dieser Kopie von Tessary sind keine Aktualisierungen eingerichtet.</translation>
    </message>
    <message>
        <source>It was made without a place to look in, or others can change its files. New versions come from where you got this one.</source>
        <translation>Sie wurde ohne einen Ort zum Suchen erstellt, oder andere können ihre Dateien ändern. Neue Versionen gibt es dort, woher Sie diese haben.</translation>
    </message>
</context>
</TS>
