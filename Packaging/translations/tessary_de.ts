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
        <source>Restore Defaults</source>
        <translation>Standardwerte wiederherstellen</translation>
    </message>
    <message>
        <source>Function keys need one System Settings tweak</source>
        <translation>Funktionstasten erfordern eine Anpassung in den Systemeinstellungen</translation>
    </message>
</context>
</TS>
