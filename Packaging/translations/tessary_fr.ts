<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>tessary</name>
    <message>
        <source>Resolutions</source>
        <translation>Résolutions</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Écran</translation>
    </message>
    <message>
        <source>Not set</source>
        <translation>Non définie</translation>
    </message>
    <message>
        <source>Currently {}.</source>
        <translation>Actuellement&#xa0;: {}.</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Général</translation>
    </message>
    <message>
        <source>Start Tessary at login</source>
        <translation>Lancer Tessary à l’ouverture de session</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>Mises à jour</translation>
    </message>
    <message>
        <source>Check automatically</source>
        <translation>Vérifier automatiquement</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>Vérifier maintenant</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>Raccourcis clavier</translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation>Rétablir les valeurs par défaut</translation>
    </message>
    <message>
        <source>Function keys need one System Settings tweak</source>
        <translation>Les touches de fonction nécessitent un réglage dans les paramètres système</translation>
    </message>
</context>
</TS>
