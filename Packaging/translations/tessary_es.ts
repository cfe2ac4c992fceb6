<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>tessary</name>
    <message>
        <source>Resolutions</source>
        <translation>Resoluciones</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Pantalla</translation>
    </message>
    <message>
        <source>Not set</source>
        <translation>Sin definir</translation>
    </message>
    <message>
        <source>Currently {}.</source>
        <translation>Actualmente: {}.</translation>
    </message>
    <message>
        <source>General</source>
        <translation>General</translation>
    </message>
    <message>
        <source>Start Tessary at login</source>
        <translation>Abrir Tessary al iniciar sesión</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>Actualizaciones</translation>
    </message>
    <message>
        <source>Check automatically</source>
        <translation>Buscar automáticamente</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>Buscar ahora</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>Atajos de teclado</translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation>Restaurar valores predeterminados</translation>
    </message>
    <message>
        <source>Function keys need one System Settings tweak</source>
        <translation>Las teclas de función requieren un ajuste en la configuración del sistema</translation>
    </message>
</context>
</TS>
