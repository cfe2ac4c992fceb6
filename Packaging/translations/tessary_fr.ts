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
        <source>Click, then type a shortcut. Escape cancels, Backspace clears.</source>
        <translation>Cliquez, puis tapez un raccourci. Échap annule, Retour arrière efface.</translation>
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
<context>
    <name>updates</name>
    <message>
        <source>en</source>
        <translation>fr</translation>
    </message>
    <message>
        <source>Tessary Update</source>
        <translation>Mise à jour de Tessary</translation>
    </message>
    <message>
        <source>Looking for updates…</source>
        <translation>Recherche de mises à jour…</translation>
    </message>
    <message>
        <source>Tessary %1 is available</source>
        <translation>Tessary %1 est disponible</translation>
    </message>
    <message>
        <source>You have %1. Install downloads the new version (%2), verifies it, and opens it with this computer's package installer. Afterwards quit Tessary and start it again.</source>
        <translation>Vous avez la version %1. « Installer » télécharge la nouvelle version (%2), la vérifie et l’ouvre avec l’installateur de paquets de cet ordinateur. Ensuite, quittez puis relancez Tessary.</translation>
    </message>
    <message>
        <source>What is new</source>
        <translation>Nouveautés</translation>
    </message>
    <message>
        <source>&amp;Install</source>
        <translation>&amp;Installer</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <translation>&amp;Plus tard</translation>
    </message>
    <message>
        <source>&amp;Skip This Version</source>
        <translation>I&amp;gnorer cette version</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Annuler</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Fermer</translation>
    </message>
    <message>
        <source>&amp;Try Again</source>
        <translation>&amp;Réessayer</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
    <message>
        <source>Downloading %1…</source>
        <translation>Téléchargement de %1…</translation>
    </message>
    <message>
        <source>Opening %1…</source>
        <translation>Ouverture de %1…</translation>
    </message>
    <message>
        <source>%1 could not be opened</source>
        <translation>%1 n’a pas pu être ouvert</translation>
    </message>
    <message>
        <source>%1 could not be downloaded</source>
        <translation>%1 n’a pas pu être téléchargé</translation>
    </message>
    <message>
        <source>Tessary is up to date</source>
        <translation>Tessary est à jour</translation>
    </message>
    <message>
        <source>You have %1, and there is nothing newer for this computer.</source>
        <translation>Vous avez la version %1, et il n’y a rien de plus récent pour cet ordinateur.</translation>
    </message>
    <message>
        <source>Tessary could not look for updates</source>
        <translation>Tessary n’a pas pu rechercher de mises à jour</translation>
    </message>
    <message>
        <source>The list of updates is damaged.</source>
        <translation>La liste des mises à jour est endommagée.</translation>
    </message>
    <message>
        <source>The list of updates names an address that is not secure.</source>
        <translation>La liste des mises à jour indique une adresse non sécurisée.</translation>
    </message>
    <message>
        <source>The feed is too large.</source>
        <translation>La liste des mises à jour est trop volumineuse.</translation>
    </message>
    <message>
        <source>The server took too long to send the feed.</source>
        <translation>Le serveur a mis trop de temps à envoyer la liste des mises à jour.</translation>
    </message>
    <message>
        <source>The address “%1” is not secure.</source>
        <translation>L’adresse « %1 » n’est pas sécurisée.</translation>
    </message>
    <message>
        <source>The server redirects too often.</source>
        <translation>Le serveur redirige trop souvent.</translation>
    </message>
    <message>
        <source>The server redirects to an address that is not secure.</source>
        <translation>Le serveur redirige vers une adresse non sécurisée.</translation>
    </message>
    <message>
        <source>The server answered %1.</source>
        <translation>Le serveur a répondu %1.</translation>
    </message>
    <message>
        <source>The connection ended before everything had come.</source>
        <translation>La connexion s’est terminée avant que tout soit reçu.</translation>
    </message>
    <message>
        <source>The server %1 was not found.</source>
        <translation>Le serveur %1 est introuvable.</translation>
    </message>
    <message>
        <source>The server %1 cannot be reached.</source>
        <translation>Le serveur %1 est injoignable.</translation>
    </message>
    <message>
        <source>The server %1 took too long to answer.</source>
        <translation>Le serveur %1 a mis trop de temps à répondre.</translation>
    </message>
    <message>
        <source>There is no secure connection to %1: %2</source>
        <translation>Pas de connexion sécurisée avec %1 : %2</translation>
    </message>
    <message>
        <source>The transfer failed: %1</source>
        <translation>Le transfert a échoué : %1</translation>
    </message>
    <message>
        <source>The package is shorter than announced.</source>
        <translation>Le paquet est plus court qu’annoncé.</translation>
    </message>
    <message>
        <source>The package is larger than announced.</source>
        <translation>Le paquet est plus volumineux qu’annoncé.</translation>
    </message>
    <message>
        <source>The downloaded package is not the one that Tessary's developers have signed.</source>
        <translation>Le paquet téléchargé n’est pas celui que les développeurs de Tessary ont signé.</translation>
    </message>
    <message>
        <source>The version's number makes no sense.</source>
        <translation>Le numéro de version n’a pas de sens.</translation>
    </message>
    <message>
        <source>There is too little space for the package in “%1”.</source>
        <translation>Il n’y a pas assez de place pour le paquet dans « %1 ».</translation>
    </message>
    <message>
        <source>The package could not be written: %1.</source>
        <translation>Le paquet n’a pas pu être écrit : %1.</translation>
    </message>
    <message>
        <source>%1 It was deleted.</source>
        <translation>%1 Il a été supprimé.</translation>
    </message>
    <message>
        <source>The folder “%1” cannot be used: %2.</source>
        <translation>Le dossier « %1 » ne peut pas être utilisé : %2.</translation>
    </message>
    <message>
        <source>it is a link or a file</source>
        <translation>c’est un lien ou un fichier</translation>
    </message>
    <message>
        <source>it belongs to another user</source>
        <translation>il appartient à un autre utilisateur</translation>
    </message>
    <message>
        <source>it is no absolute path</source>
        <translation>ce n’est pas un chemin absolu</translation>
    </message>
    <message>
        <source>The kind of the package is unknown.</source>
        <translation>Le type du paquet est inconnu.</translation>
    </message>
    <message>
        <source>The program “%1”, which finds the program for the package, could not be started.</source>
        <translation>Le programme « %1 », qui trouve le programme prévu pour le paquet, n’a pas pu démarrer.</translation>
    </message>
    <message>
        <source>No program is registered for this kind of package.</source>
        <translation>Aucun programme n’est enregistré pour ce type de paquet.</translation>
    </message>
    <message>
        <source>The program for the package could not be started.</source>
        <translation>Le programme prévu pour le paquet n’a pas pu démarrer.</translation>
    </message>
    <message>
        <source>%1 The package lies at “%2”.</source>
        <translation>%1 Le paquet se trouve dans « %2 ».</translation>
    </message>
    <message>
        <source>Updates are not set up in this copy of Tessary.</source>
        <translation>Les mises à jour ne sont pas configurées dans cette copie de Tessary.</translation>
    </message>
    <message>
        <source>It was made without a place to look in, or others can change its files. New versions come from where you got this one.</source>
        <translation>Elle a été créée sans adresse où chercher, ou d’autres peuvent modifier ses fichiers. Les nouvelles versions se trouvent là où vous avez obtenu celle-ci.</translation>
    </message>
</context>
</TS>
