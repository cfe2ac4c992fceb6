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
        <source>Click, then type a shortcut. Escape cancels, Backspace clears.</source>
        <translation>Haga clic y pulse un atajo. Esc cancela, Retroceso borra.</translation>
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
<context>
    <name>updates</name>
    <message>
        <source>en</source>
        <translation>es</translation>
    </message>
    <message>
        <source>Tessary Update</source>
        <translation>Actualización de Tessary</translation>
    </message>
    <message>
        <source>Looking for updates…</source>
        <translation>Buscando actualizaciones…</translation>
    </message>
    <message>
        <source>Tessary %1 is available</source>
        <translation>Tessary %1 está disponible</translation>
    </message>
    <message>
        <source>You have %1. Install downloads the new version (%2), verifies it, and opens it with this computer's package installer. Afterwards quit Tessary and start it again.</source>
        <translation>Tiene la versión %1. «Instalar» descarga la nueva versión (%2), la verifica y la abre con el instalador de paquetes de este equipo. Después, salga de Tessary e inícielo de nuevo.</translation>
    </message>
    <message>
        <source>What is new</source>
        <translation>Novedades</translation>
    </message>
    <message>
        <source>&amp;Install</source>
        <translation>&amp;Instalar</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <translation>&amp;Más tarde</translation>
    </message>
    <message>
        <source>&amp;Skip This Version</source>
        <translation>&amp;Omitir esta versión</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Cancelar</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Cerrar</translation>
    </message>
    <message>
        <source>&amp;Try Again</source>
        <translation>&amp;Reintentar</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
    </message>
    <message>
        <source>Downloading %1…</source>
        <translation>Descargando %1…</translation>
    </message>
    <message>
        <source>Opening %1…</source>
        <translation>Abriendo %1…</translation>
    </message>
    <message>
        <source>%1 could not be opened</source>
        <translation>No se pudo abrir %1</translation>
    </message>
    <message>
        <source>%1 could not be downloaded</source>
        <translation>No se pudo descargar %1</translation>
    </message>
    <message>
        <source>Tessary is up to date</source>
        <translation>Tessary está actualizado</translation>
    </message>
    <message>
        <source>You have %1, and there is nothing newer for this computer.</source>
        <translation>Tiene la versión %1 y no hay nada más reciente para este equipo.</translation>
    </message>
    <message>
        <source>Tessary could not look for updates</source>
        <translation>Tessary no pudo buscar actualizaciones</translation>
    </message>
    <message>
        <source>The list of updates is damaged.</source>
        <translation>La lista de actualizaciones está dañada.</translation>
    </message>
    <message>
        <source>The list of updates names an address that is not secure.</source>
        <translation>La lista de actualizaciones contiene una dirección que no es segura.</translation>
    </message>
    <message>
        <source>The feed is too large.</source>
        <translation>La lista de actualizaciones es demasiado grande.</translation>
    </message>
    <message>
        <source>The server took too long to send the feed.</source>
        <translation>El servidor tardó demasiado en enviar la lista de actualizaciones.</translation>
    </message>
    <message>
        <source>The address “%1” is not secure.</source>
        <translation>La dirección «%1» no es segura.</translation>
    </message>
    <message>
        <source>The server redirects too often.</source>
        <translation>El servidor redirige demasiadas veces.</translation>
    </message>
    <message>
        <source>The server redirects to an address that is not secure.</source>
        <translation>El servidor redirige a una dirección que no es segura.</translation>
    </message>
    <message>
        <source>The server answered %1.</source>
        <translation>El servidor respondió %1.</translation>
    </message>
    <message>
        <source>The connection ended before everything had come.</source>
        <translation>La conexión terminó antes de recibirlo todo.</translation>
    </message>
    <message>
        <source>The server %1 was not found.</source>
        <translation>No se encontró el servidor %1.</translation>
    </message>
    <message>
        <source>The server %1 cannot be reached.</source>
        <translation>No se puede acceder al servidor %1.</translation>
    </message>
    <message>
        <source>The server %1 took too long to answer.</source>
        <translation>El servidor %1 tardó demasiado en responder.</translation>
    </message>
    <message>
        <source>There is no secure connection to %1: %2</source>
        <translation>No hay una conexión segura con %1: %2</translation>
    </message>
    <message>
        <source>The transfer failed: %1</source>
        <translation>La transferencia falló: %1</translation>
    </message>
    <message>
        <source>The package is shorter than announced.</source>
        <translation>El paquete es más corto de lo anunciado.</translation>
    </message>
    <message>
        <source>The package is larger than announced.</source>
        <translation>El paquete es más grande de lo anunciado.</translation>
    </message>
    <message>
        <source>The downloaded package is not the one that Tessary's developers have signed.</source>
        <translation>El paquete descargado no es el que firmaron los desarrolladores de Tessary.</translation>
    </message>
    <message>
        <source>The version's number makes no sense.</source>
        <translation>El número de versión no tiene sentido.</translation>
    </message>
    <message>
        <source>There is too little space for the package in “%1”.</source>
        <translation>No hay espacio suficiente para el paquete en «%1».</translation>
    </message>
    <message>
        <source>The package could not be written: %1.</source>
        <translation>No se pudo escribir el paquete: %1.</translation>
    </message>
    <message>
        <source>%1 It was deleted.</source>
        <translation>%1 Se ha eliminado.</translation>
    </message>
    <message>
        <source>The folder “%1” cannot be used: %2.</source>
        <translation>No se puede usar la carpeta «%1»: %2.</translation>
    </message>
    <message>
        <source>it is a link or a file</source>
        <translation>es un enlace o un archivo</translation>
    </message>
    <message>
        <source>it belongs to another user</source>
        <translation>pertenece a otro usuario</translation>
    </message>
    <message>
        <source>it is no absolute path</source>
        <translation>no es una ruta absoluta</translation>
    </message>
    <message>
        <source>The kind of the package is unknown.</source>
        <translation>El tipo del paquete es desconocido.</translation>
    </message>
    <message>
        <source>The program “%1”, which finds the program for the package, could not be started.</source>
        <translation>No se pudo iniciar el programa «%1», que busca el programa para el paquete.</translation>
    </message>
    <message>
        <source>No program is registered for this kind of package.</source>
        <translation>No hay ningún programa registrado para este tipo de paquete.</translation>
    </message>
    <message>
        <source>The program for the package could not be started.</source>
        <translation>No se pudo iniciar el programa para el paquete.</translation>
    </message>
    <message>
        <source>%1 The package lies at “%2”.</source>
        <translation>%1 El paquete está en «%2».</translation>
    </message>
    <message>
        <source>Updates are not set up in this copy of Tessary.</source>
        <translation>Las actualizaciones no están configuradas en esta copia de Tessary.</translation>
    </message>
    <message>
        <source>It was made without a place to look in, or others can change its files. New versions come from where you got this one.</source>
        <translation>Se creó sin un lugar donde buscar, u otros pueden modificar sus archivos. Las versiones nuevas se obtienen donde obtuvo esta.</translation>
    </message>
</context>
</TS>
