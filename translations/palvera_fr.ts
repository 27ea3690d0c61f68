<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR" sourcelanguage="en">
<context>
    <name>AboutSheet</name>
    <message>
        <source>About Palvera</source>
        <translation>À propos de Palvera</translation>
    </message>
    <message>
        <source>Palvera</source>
        <translation>Palvera</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Last check for updates</source>
        <translation>Dernière recherche de mises à jour</translation>
    </message>
    <message>
        <source>Last failure</source>
        <translation>Dernier échec</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Rechercher des mises à jour…</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Licences</source>
        <translation>Licences</translation>
    </message>
    <message>
        <source>Palvera works with Qt (LGPL 3), Boost (Boost Software License), libcurl (curl licence), OpenSSL (Apache 2.0), libfido2 and libarchive (BSD), the symbols of Phosphor (MIT) and the typeface Inter (Open Font License).</source>
        <translation>Palvera utilise Qt (LGPL 3), Boost (Boost Software License), libcurl (licence curl), OpenSSL (Apache 2.0), libfido2 et libarchive (BSD), les symboles de Phosphor (MIT) et la police Inter (Open Font License).</translation>
    </message>
    <message>
        <source>Show their texts</source>
        <translation>Afficher leurs textes</translation>
    </message>
</context>
<context>
    <name>AccountMenu</name>
    <message>
        <source>Account</source>
        <translation>Compte</translation>
    </message>
</context>
<context>
    <name>AccountRows</name>
    <message>
        <source>Sign out</source>
        <translation>Se déconnecter</translation>
    </message>
</context>
<context>
    <name>AssetTableRow</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
    <message>
        <source>Deal</source>
        <translation>Accord</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Taille</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Date</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1&#xa0;: %2</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
</context>
<context>
    <name>AssetsMenu</name>
    <message>
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>Copy name</source>
        <translation>Copier le nom</translation>
    </message>
    <message>
        <source>Select all</source>
        <translation>Tout sélectionner</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Retour</translation>
    </message>
</context>
<context>
    <name>AssetsTable</name>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>Deal</source>
        <translation>Accord</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Taille</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Date</translation>
    </message>
    <message>
        <source>Loading</source>
        <translation>Chargement</translation>
    </message>
    <message>
        <source>Load more</source>
        <translation>En charger plus</translation>
    </message>
</context>
<context>
    <name>AssetsView</name>
    <message>
        <source>Kind</source>
        <translation>Genre</translation>
    </message>
    <message>
        <source>Which kind of file to show</source>
        <translation>Genre de fichiers à afficher</translation>
    </message>
    <message>
        <source>Upload</source>
        <translation>Téléverser</translation>
    </message>
    <message>
        <source>Add master files to Uploads</source>
        <translation>Ajouter des fichiers master à «&#xa0;Téléversements&#xa0;»</translation>
    </message>
    <message>
        <source>Download what is selected</source>
        <translation>Télécharger la sélection</translation>
    </message>
    <message>
        <source>Download what is selected
to %1</source>
        <translation>Télécharger la sélection
vers %1</translation>
    </message>
    <message>
        <source>Where downloads go</source>
        <translation>Destination des téléchargements</translation>
    </message>
    <message>
        <source>Choose another folder…</source>
        <translation>Choisir un autre dossier…</translation>
    </message>
    <message>
        <source>Find in Uploads</source>
        <translation>Rechercher un fichier</translation>
    </message>
    <message>
        <source>Find an asset</source>
        <translation>Rechercher une ressource</translation>
    </message>
    <message>
        <source>Loading</source>
        <translation>Chargement</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>Could not load Assets</source>
        <translation>Impossible de charger «&#xa0;Ressources&#xa0;»</translation>
    </message>
    <message>
        <source>Show all</source>
        <translation>Tout afficher</translation>
    </message>
</context>
<context>
    <name>BackLink</name>
    <message>
        <source>Back to sign in</source>
        <translation>Retour à la connexion</translation>
    </message>
</context>
<context>
    <name>BrowserFace</name>
    <message>
        <source>Finished there? Choose Open Palvera in the browser, or open it again.</source>
        <translation>Terminé&#xa0;? Choisissez d’ouvrir Palvera dans le navigateur, ou rouvrez celui-ci.</translation>
    </message>
    <message>
        <source>Your browser is open at the sign-in page. When it asks, choose Open Palvera.</source>
        <translation>La page de connexion est ouverte dans votre navigateur. Lorsqu’il le demande, choisissez d’ouvrir Palvera.</translation>
    </message>
    <message>
        <source>Finish in your browser</source>
        <translation>Terminez dans votre navigateur</translation>
    </message>
    <message>
        <source>Open the browser again</source>
        <translation>Rouvrir le navigateur</translation>
    </message>
    <message>
        <source>Copy the address</source>
        <translation>Copier l’adresse</translation>
    </message>
    <message>
        <source>The address is copied</source>
        <translation>Adresse copiée</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>CodeFace</name>
    <message>
        <source>Checking</source>
        <translation>Vérification</translation>
    </message>
    <message>
        <source>We sent a six-digit code to %1. Enter it here to confirm the address is yours.</source>
        <translation>Nous avons envoyé un code à six chiffres à %1. Saisissez-le ici pour confirmer que cette adresse est la vôtre.</translation>
    </message>
    <message>
        <source>Enter the code from your authenticator app.</source>
        <translation>Saisissez le code de votre application d’authentification.</translation>
    </message>
    <message>
        <source>Check your email</source>
        <translation>Consultez votre messagerie</translation>
    </message>
    <message>
        <source>One more step</source>
        <translation>Encore une étape</translation>
    </message>
    <message>
        <source>Another code is on its way.</source>
        <translation>Un autre code est en route.</translation>
    </message>
    <message>
        <source>Nothing arrived?</source>
        <translation>Rien reçu&#xa0;?</translation>
    </message>
    <message>
        <source>Send another code</source>
        <translation>Envoyer un autre code</translation>
    </message>
    <message>
        <source>Code from the email</source>
        <translation>Code reçu par e-mail</translation>
    </message>
    <message>
        <source>Code from the app</source>
        <translation>Code de l’application</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
</context>
<context>
    <name>ConfirmDialog</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>CopyableText</name>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
</context>
<context>
    <name>CutOffCard</name>
    <message>
        <source>Locate…</source>
        <translation>Localiser…</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Reprendre</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Abandonner</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
</context>
<context>
    <name>DeliverableView</name>
    <message>
        <source>Deliverables</source>
        <translation>Livrables</translation>
    </message>
    <message>
        <source>Large files go up on several connections at once, and pick up where they left off if the network drops.</source>
        <translation>Les gros fichiers sont téléversés sur plusieurs connexions à la fois et reprennent là où ils en étaient si le réseau tombe.</translation>
    </message>
    <message>
        <source>Drop a file here</source>
        <translation>Déposez un fichier ici</translation>
    </message>
    <message>
        <source>Keep going</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
</context>
<context>
    <name>DeliverablesView</name>
    <message>
        <source>Projects</source>
        <translation>Projets</translation>
    </message>
    <message>
        <source>Find a deliverable</source>
        <translation>Rechercher un livrable</translation>
    </message>
    <message>
        <source>Clear the filters</source>
        <translation>Effacer les filtres</translation>
    </message>
    <message>
        <source>Clear the search</source>
        <translation>Effacer la recherche</translation>
    </message>
    <message>
        <source>Clear a filter to see more.</source>
        <translation>Effacez un filtre pour en voir plus.</translation>
    </message>
    <message>
        <source>Nothing matches</source>
        <translation>Aucun résultat</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>Could not load the deliverables</source>
        <translation>Impossible de charger les livrables</translation>
    </message>
</context>
<context>
    <name>DropZone</name>
    <message>
        <source>Choose a file</source>
        <translation>Choisir un fichier</translation>
    </message>
</context>
<context>
    <name>EmailFace</name>
    <message>
        <source>or</source>
        <translation>ou</translation>
    </message>
    <message>
        <source>Continue with %1, in a sign-in window.</source>
        <translation>Continuer avec %1, dans une fenêtre de connexion.</translation>
    </message>
    <message>
        <source>Sign in with a passkey</source>
        <translation>Se connecter avec une clé d’accès</translation>
    </message>
    <message>
        <source>With your security key.</source>
        <translation>Avec votre clé de sécurité.</translation>
    </message>
    <message>
        <source>Opens the sign-in window; use your passkey there.</source>
        <translation>Dans la fenêtre de connexion, avec votre clé d’accès.</translation>
    </message>
</context>
<context>
    <name>EmailField</name>
    <message>
        <source>Work email</source>
        <translation>E-mail professionnel</translation>
    </message>
    <message>
        <source>you@studio.example</source>
        <translation>vous@studio.example</translation>
    </message>
</context>
<context>
    <name>EnrolFace</name>
    <message>
        <source>Every sign-in asks for a code from an authenticator app. Scan this with Google Authenticator, 1Password or any app that makes them, then enter the code it shows.</source>
        <translation>Chaque connexion demande un code d’une application d’authentification. Scannez ceci avec Google Authenticator, 1Password ou toute autre application qui en produit, puis saisissez le code affiché.</translation>
    </message>
    <message>
        <source>Add an authenticator</source>
        <translation>Ajouter un authentificateur</translation>
    </message>
    <message>
        <source>QR code for your authenticator app</source>
        <translation>Code QR pour votre application d’authentification</translation>
    </message>
    <message>
        <source>Cannot scan it? Enter this key instead</source>
        <translation>Scan impossible&#xa0;? Saisissez cette clé</translation>
    </message>
    <message>
        <source>Enter this key in your authenticator app</source>
        <translation>Clé pour votre application d’authentification</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Clé</translation>
    </message>
    <message>
        <source>Code from the app</source>
        <translation>Code de l’application</translation>
    </message>
</context>
<context>
    <name>FailureCard</name>
    <message>
        <source>Locate…</source>
        <translation>Localiser…</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Abandonner</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
</context>
<context>
    <name>FilePanel</name>
    <message>
        <source>Choose a file to send</source>
        <translation>Choisir un fichier à envoyer</translation>
    </message>
    <message>
        <source>Choose where downloads go</source>
        <translation>Choisir la destination des téléchargements</translation>
    </message>
</context>
<context>
    <name>FiledCard</name>
    <message>
        <source>Filed against this deliverable</source>
        <translation>Déposé pour ce livrable</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Télécharger</translation>
    </message>
    <message>
        <source>Drop a file to replace this</source>
        <translation>Déposez un fichier pour remplacer celui-ci</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
</context>
<context>
    <name>FilesPanel</name>
    <message>
        <source>Choose files to add to Uploads</source>
        <translation>Choisir des fichiers à ajouter à «&#xa0;Téléversements&#xa0;»</translation>
    </message>
    <message>
        <source>Choose where downloads go</source>
        <translation>Choisir la destination des téléchargements</translation>
    </message>
</context>
<context>
    <name>FilterBar</name>
    <message>
        <source>Family</source>
        <translation>Famille</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>État</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Langue</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Fichiers</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Effacer</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>Tri</translation>
    </message>
    <message>
        <source>Clear the filters</source>
        <translation>Effacer les filtres</translation>
    </message>
</context>
<context>
    <name>ForgotFace</name>
    <message>
        <source>Send me a link</source>
        <translation>M’envoyer un lien</translation>
    </message>
    <message>
        <source>Sending</source>
        <translation>Envoi</translation>
    </message>
    <message>
        <source>If %1 has an account, a link is on its way. It works once and expires in an hour.</source>
        <translation>Si %1 a un compte, un lien est en route. Il fonctionne une seule fois et expire dans une heure.</translation>
    </message>
    <message>
        <source>Give us the email address on your account and we will send a link to set a new one.</source>
        <translation>Indiquez l’adresse e-mail de votre compte et nous vous enverrons un lien pour en définir un nouveau.</translation>
    </message>
    <message>
        <source>Forgotten your password?</source>
        <translation>Mot de passe oublié&#xa0;?</translation>
    </message>
    <message>
        <source>Nothing has changed yet. Following the link sets a new password and signs you out everywhere else.</source>
        <translation>Rien n’a encore changé. Le lien permet de définir un nouveau mot de passe et vous déconnecte partout ailleurs.</translation>
    </message>
</context>
<context>
    <name>GoneCard</name>
    <message>
        <source>The platform no longer has this deliverable</source>
        <translation>La plateforme n’a plus ce livrable</translation>
    </message>
    <message>
        <source>Nothing can be sent to it. If it comes back, it takes files again.</source>
        <translation>Rien ne peut y être envoyé. S’il revient, il acceptera de nouveau des fichiers.</translation>
    </message>
</context>
<context>
    <name>HelpSheet</name>
    <message>
        <source>Sending a master</source>
        <translation>Envoyer un master</translation>
    </message>
    <message>
        <source>Open the client, the project and the deliverable, and drop the file there, or choose it with the button. A file may also be dropped on a row of the list. It goes up over several connections, is checked by the platform, and is filed: only then is it called done.</source>
        <translation>Ouvrez le client, le projet et le livrable, puis déposez-y le fichier ou choisissez-le avec le bouton. Un fichier peut aussi être déposé sur une ligne de la liste. Il est téléversé sur plusieurs connexions, vérifié par la plateforme et enregistré&#xa0;: alors seulement, il est dit terminé.</translation>
    </message>
    <message>
        <source>When something comes between</source>
        <translation>En cas d’imprévu</translation>
    </message>
    <message>
        <source>A lost network, a restart of the platform or sleep are waited out, and the upload goes on by itself. If the program ends first, the upload waits under Interrupted in the transfers, and goes on from the part that it had reached. The file must not change meanwhile; if it was moved, use Locate.</source>
        <translation>Une perte de réseau, un redémarrage de la plateforme ou la mise en veille sont attendus, et le téléversement reprend de lui-même. Si le programme se termine avant, le téléversement attend sous «&#xa0;Interrompus&#xa0;» dans les transferts et reprend à la partie atteinte. Le fichier ne doit pas changer entre-temps&#xa0;; s’il a été déplacé, utilisez «&#xa0;Localiser&#xa0;».</translation>
    </message>
    <message>
        <source>The transfers</source>
        <translation>Les transferts</translation>
    </message>
    <message>
        <source>Downloads</source>
        <translation>Téléchargements</translation>
    </message>
    <message>
        <source>A file comes down into the downloads folder, which the first download asks for. A file that is there is never replaced: the new one gets a number. A download that was cut off waits under Interrupted, too.</source>
        <translation>Un fichier arrive dans le dossier des téléchargements, demandé au premier téléchargement. Un fichier déjà présent n’est jamais remplacé&#xa0;: le nouveau reçoit un numéro. Un téléchargement interrompu attend lui aussi sous «&#xa0;Interrompus&#xa0;».</translation>
    </message>
    <message>
        <source>Sharing the line</source>
        <translation>Partager la ligne</translation>
    </message>
    <message>
        <source>Under Settings the transfers can be kept to so many MB/s, all day long or between certain hours. It holds at once, for what is moving, too.</source>
        <translation>Dans «&#xa0;Paramètres&#xa0;», les transferts peuvent être limités à un débit en MB/s, toute la journée ou entre certaines heures. Cela vaut aussitôt, même pour ce qui est en cours.</translation>
    </message>
    <message>
        <source>Signing in</source>
        <translation>Se connecter</translation>
    </message>
    <message>
        <source>With an e-mail address and a password, in the browser, or with a passkey of a security key. When a sign-in expires, transfers wait until you have signed in again.</source>
        <translation>Avec une adresse e-mail et un mot de passe, dans le navigateur, ou avec une clé d’accès sur une clé de sécurité. Quand une connexion expire, les transferts attendent que vous vous soyez reconnecté.</translation>
    </message>
    <message>
        <source>When you need help</source>
        <translation>Si vous avez besoin d’aide</translation>
    </message>
    <message>
        <source>The log of the transfers says what was sent when, and how fast. Errors can be copied from the menu of a row: the platform&apos;s support will ask for them.</source>
        <translation>Le journal des transferts indique ce qui a été envoyé, quand et à quel débit. Les erreurs peuvent être copiées depuis le menu d’une ligne&#xa0;: l’assistance de la plateforme les demandera.</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Aide</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>The panel shows what moves, what is over and what was cut off. As many run at once as the settings say, in the order of the list; drag a row or use Ctrl and the arrows to change it. What is paused keeps its place and what has arrived. What is stopped is given up.</source>
        <translation>Le panneau montre ce qui est en cours, ce qui est terminé et ce qui a été interrompu. Il s’en fait à la fois autant que le disent les réglages, dans l’ordre de la liste&#xa0;; faites glisser une ligne ou utilisez Ctrl et les flèches pour le modifier. Ce qui est suspendu garde sa place et ce qui est déjà arrivé. Ce qui est arrêté est abandonné.</translation>
    </message>
</context>
<context>
    <name>InFlightCard</name>
    <message>
        <source>Resume</source>
        <translation>Reprendre</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Suspendre</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Terminé</translation>
    </message>
    <message>
        <source>Transferred</source>
        <translation>Transféré</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>Débit</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Restant</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
</context>
<context>
    <name>Installer</name>
    <message>
        <source>The update is not signed by Palvera.</source>
        <translation>La mise à jour n’est pas signée par Palvera.</translation>
    </message>
    <message>
        <source>The update is damaged.</source>
        <translation>La mise à jour est endommagée.</translation>
    </message>
    <message>
        <source>The update is incomplete.</source>
        <translation>La mise à jour est incomplète.</translation>
    </message>
    <message>
        <source>The update is older than the copy on this computer.</source>
        <translation>La mise à jour est plus ancienne que la copie de cet ordinateur.</translation>
    </message>
    <message>
        <source>The update is not the one that was announced.</source>
        <translation>La mise à jour n’est pas celle qui était annoncée.</translation>
    </message>
    <message>
        <source>The update is for another kind of computer.</source>
        <translation>La mise à jour est destinée à un autre type d’ordinateur.</translation>
    </message>
    <message>
        <source>The update holds something that does not belong there.</source>
        <translation>La mise à jour contient un élément qui n’a rien à y faire.</translation>
    </message>
    <message>
        <source>The update does not run on this computer.</source>
        <translation>La mise à jour ne fonctionne pas sur cet ordinateur.</translation>
    </message>
    <message>
        <source>Another update is under way on this computer. Try again in a minute.</source>
        <translation>Une autre mise à jour est en cours sur cet ordinateur. Réessayez dans une minute.</translation>
    </message>
    <message>
        <source>The update could not be read in time.</source>
        <translation>La mise à jour n’a pas pu être lue à temps.</translation>
    </message>
    <message>
        <source>The update could not be unpacked.</source>
        <translation>La mise à jour n’a pas pu être décompressée.</translation>
    </message>
    <message>
        <source>You may not install updates on this computer. Ask whoever looks after it.</source>
        <translation>Vous n’êtes pas autorisé à installer des mises à jour sur cet ordinateur. Adressez-vous à la personne qui s’en occupe.</translation>
    </message>
    <message>
        <source>Nobody could be asked whether updates may be installed on this computer.</source>
        <translation>Personne n’a pu être interrogé pour autoriser l’installation de mises à jour sur cet ordinateur.</translation>
    </message>
    <message>
        <source>This copy of Palvera is not looked after by the installer.</source>
        <translation>Cette copie de Palvera n’est pas gérée par le programme d’installation.</translation>
    </message>
    <message>
        <source>The installer is missing from this copy of the app.</source>
        <translation>Le programme d’installation manque dans cette copie de l’application.</translation>
    </message>
    <message>
        <source>There is no prepared update.</source>
        <translation>Aucune mise à jour n’est prête.</translation>
    </message>
</context>
<context>
    <name>InterruptedDialogs</name>
    <message>
        <source>Keep</source>
        <translation>Conserver</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Abandonner</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>Is this the same file?</source>
        <translation>Est-ce le même fichier&#xa0;?</translation>
    </message>
    <message>
        <source>Send it from the start</source>
        <translation>L’envoyer depuis le début</translation>
    </message>
    <message>
        <source>That is another file</source>
        <translation>C’est un autre fichier</translation>
    </message>
    <message>
        <source>That did not work</source>
        <translation>Cela n’a pas fonctionné</translation>
    </message>
</context>
<context>
    <name>InterruptedLine</name>
    <message>
        <source>Resume all</source>
        <translation>Tout reprendre</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Afficher</translation>
    </message>
</context>
<context>
    <name>InterruptedRow</name>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>Locate…</source>
        <translation>Localiser…</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Reprendre</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Abandonner</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
</context>
<context>
    <name>Language</name>
    <message>
        <source>Arabic</source>
        <translation>Arabe</translation>
    </message>
    <message>
        <source>Basque</source>
        <translation>Basque</translation>
    </message>
    <message>
        <source>Bengali</source>
        <translation>Bengali</translation>
    </message>
    <message>
        <source>Bulgarian</source>
        <translation>Bulgare</translation>
    </message>
    <message>
        <source>Cantonese</source>
        <translation>Cantonais</translation>
    </message>
    <message>
        <source>Catalan</source>
        <translation>Catalan</translation>
    </message>
    <message>
        <source>Chinese</source>
        <translation>Chinois</translation>
    </message>
    <message>
        <source>Croatian</source>
        <translation>Croate</translation>
    </message>
    <message>
        <source>Czech</source>
        <translation>Tchèque</translation>
    </message>
    <message>
        <source>Danish</source>
        <translation>Danois</translation>
    </message>
    <message>
        <source>Dutch</source>
        <translation>Néerlandais</translation>
    </message>
    <message>
        <source>English</source>
        <translation>Anglais</translation>
    </message>
    <message>
        <source>Estonian</source>
        <translation>Estonien</translation>
    </message>
    <message>
        <source>Filipino</source>
        <translation>Filipino</translation>
    </message>
    <message>
        <source>Finnish</source>
        <translation>Finnois</translation>
    </message>
    <message>
        <source>French</source>
        <translation>Français</translation>
    </message>
    <message>
        <source>Galician</source>
        <translation>Galicien</translation>
    </message>
    <message>
        <source>German</source>
        <translation>Allemand</translation>
    </message>
    <message>
        <source>Greek</source>
        <translation>Grec</translation>
    </message>
    <message>
        <source>Hebrew</source>
        <translation>Hébreu</translation>
    </message>
    <message>
        <source>Hindi</source>
        <translation>Hindi</translation>
    </message>
    <message>
        <source>Hungarian</source>
        <translation>Hongrois</translation>
    </message>
    <message>
        <source>Icelandic</source>
        <translation>Islandais</translation>
    </message>
    <message>
        <source>Indonesian</source>
        <translation>Indonésien</translation>
    </message>
    <message>
        <source>Irish</source>
        <translation>Irlandais</translation>
    </message>
    <message>
        <source>Italian</source>
        <translation>Italien</translation>
    </message>
    <message>
        <source>Japanese</source>
        <translation>Japonais</translation>
    </message>
    <message>
        <source>Korean</source>
        <translation>Coréen</translation>
    </message>
    <message>
        <source>Latvian</source>
        <translation>Letton</translation>
    </message>
    <message>
        <source>Lithuanian</source>
        <translation>Lituanien</translation>
    </message>
    <message>
        <source>Malay</source>
        <translation>Malais</translation>
    </message>
    <message>
        <source>Norwegian Bokmal</source>
        <translation>Norvégien (bokmål)</translation>
    </message>
    <message>
        <source>Persian</source>
        <translation>Persan</translation>
    </message>
    <message>
        <source>Polish</source>
        <translation>Polonais</translation>
    </message>
    <message>
        <source>Portuguese</source>
        <translation>Portugais</translation>
    </message>
    <message>
        <source>Romanian</source>
        <translation>Roumain</translation>
    </message>
    <message>
        <source>Russian</source>
        <translation>Russe</translation>
    </message>
    <message>
        <source>Serbian</source>
        <translation>Serbe</translation>
    </message>
    <message>
        <source>Slovak</source>
        <translation>Slovaque</translation>
    </message>
    <message>
        <source>Slovenian</source>
        <translation>Slovène</translation>
    </message>
    <message>
        <source>Spanish</source>
        <translation>Espagnol</translation>
    </message>
    <message>
        <source>Swedish</source>
        <translation>Suédois</translation>
    </message>
    <message>
        <source>Tamil</source>
        <translation>Tamoul</translation>
    </message>
    <message>
        <source>Telugu</source>
        <translation>Télougou</translation>
    </message>
    <message>
        <source>Thai</source>
        <translation>Thaï</translation>
    </message>
    <message>
        <source>Turkish</source>
        <translation>Turc</translation>
    </message>
    <message>
        <source>Ukrainian</source>
        <translation>Ukrainien</translation>
    </message>
    <message>
        <source>Urdu</source>
        <translation>Ourdou</translation>
    </message>
    <message>
        <source>Vietnamese</source>
        <translation>Vietnamien</translation>
    </message>
    <message>
        <source>Welsh</source>
        <translation>Gallois</translation>
    </message>
</context>
<context>
    <name>ListRow</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
</context>
<context>
    <name>LoadingView</name>
    <message>
        <source>Waiting for Palvera to answer…</source>
        <translation>En attente d’une réponse de Palvera…</translation>
    </message>
</context>
<context>
    <name>LocatePanel</name>
    <message>
        <source>Where is the file?</source>
        <translation>Où est le fichier&#xa0;?</translation>
    </message>
</context>
<context>
    <name>LoginView</name>
    <message>
        <source>Back to sign in</source>
        <translation>Retour à la connexion</translation>
    </message>
    <message>
        <source>Sign in with an access code</source>
        <translation>Se connecter avec un code d’accès</translation>
    </message>
    <message>
        <source>About Palvera</source>
        <translation>À propos de Palvera</translation>
    </message>
    <message>
        <source>Secured by WorkOS</source>
        <translation>Sécurisé par WorkOS</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Keep going</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>They wait under Interrupted and go on from where they were.</source>
        <translation>Ils attendent sous «&#xa0;Interrompus&#xa0;» et reprennent là où ils en étaient.</translation>
    </message>
    <message>
        <source>Quit while files are moving?</source>
        <translation>Quitter pendant que des fichiers sont transférés&#xa0;?</translation>
    </message>
</context>
<context>
    <name>MenuButton</name>
    <message>
        <source>Menu</source>
        <translation>Menu</translation>
    </message>
</context>
<context>
    <name>MenuRow</name>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
</context>
<context>
    <name>Notice</name>
    <message>
        <source>Dismiss</source>
        <translation>Masquer</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1&#xa0;: %2</translation>
    </message>
</context>
<context>
    <name>OrgPickerView</name>
    <message>
        <source>Choose a client</source>
        <translation>Choisir un client</translation>
    </message>
    <message>
        <source>Loading your clients…</source>
        <translation>Chargement de vos clients…</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>Nobody has shared work with you yet.</source>
        <translation>Personne n’a encore partagé de travaux avec vous.</translation>
    </message>
    <message>
        <source>Could not load your clients</source>
        <translation>Impossible de charger vos clients</translation>
    </message>
    <message>
        <source>No clients</source>
        <translation>Aucun client</translation>
    </message>
</context>
<context>
    <name>PasskeyFace</name>
    <message>
        <source>Sign in with a passkey</source>
        <translation>Se connecter avec une clé d’accès</translation>
    </message>
    <message>
        <source>PIN</source>
        <translation>Code PIN</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>Use the browser instead</source>
        <translation>Utiliser plutôt le navigateur</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>PasswordFace</name>
    <message>
        <source>Forgotten your password?</source>
        <translation>Mot de passe oublié&#xa0;?</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Modifier</translation>
    </message>
</context>
<context>
    <name>PasswordField</name>
    <message>
        <source>Password</source>
        <translation>Mot de passe</translation>
    </message>
</context>
<context>
    <name>Picker</name>
    <message>
        <source>%1: %2</source>
        <translation>%1&#xa0;: %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
</context>
<context>
    <name>PickerRow</name>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
</context>
<context>
    <name>ProgramMenu</name>
    <message>
        <source>Ctrl+,</source>
        <translation>Ctrl+,</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>Paramètres…</translation>
    </message>
    <message>
        <source>Ctrl+?</source>
        <translation>Ctrl+?</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>Raccourcis clavier</translation>
    </message>
    <message>
        <source>Open log</source>
        <translation>Ouvrir le journal</translation>
    </message>
    <message>
        <source>F1</source>
        <translation>F1</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Aide</translation>
    </message>
    <message>
        <source>About Palvera</source>
        <translation>À propos de Palvera</translation>
    </message>
    <message>
        <source>Ctrl+U</source>
        <translation>Ctrl+U</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Mises à jour…</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menu</translation>
    </message>
</context>
<context>
    <name>ProgressLine</name>
    <message>
        <source>%1, %2 percent</source>
        <translation>%1, %2 pour cent</translation>
    </message>
</context>
<context>
    <name>ProjectsPage</name>
    <message>
        <source>Choose another client</source>
        <translation>Choisir un autre client</translation>
    </message>
</context>
<context>
    <name>ProjectsView</name>
    <message>
        <source>Clients</source>
        <translation>Clients</translation>
    </message>
    <message>
        <source>Projects</source>
        <translation>Projets</translation>
    </message>
    <message>
        <source>Find a project</source>
        <translation>Rechercher un projet</translation>
    </message>
    <message>
        <source>Loading the projects</source>
        <translation>Chargement des projets</translation>
    </message>
    <message>
        <source>Nothing has been shared with you in this client yet.</source>
        <translation>Rien n’a encore été partagé avec vous chez ce client.</translation>
    </message>
    <message>
        <source>No projects</source>
        <translation>Aucun projet</translation>
    </message>
    <message>
        <source>Clear the search</source>
        <translation>Effacer la recherche</translation>
    </message>
    <message>
        <source>Nothing matches</source>
        <translation>Aucun résultat</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>Could not load your projects</source>
        <translation>Impossible de charger vos projets</translation>
    </message>
    <message>
        <source>Assets</source>
        <translation>Ressources</translation>
    </message>
    <message>
        <source>Master assets, for any project</source>
        <translation>Ressources master, pour tout projet</translation>
    </message>
    <message>
        <source>Projects of %1</source>
        <translation>Projets de %1</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>Tri</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Put in your security key.</source>
        <translation>Insérez votre clé de sécurité.</translation>
    </message>
    <message>
        <source>Touch the security key that you want to use.</source>
        <translation>Touchez la clé de sécurité que vous voulez utiliser.</translation>
    </message>
    <message>
        <source>Enter your security key&apos;s PIN.</source>
        <translation>Saisissez le code PIN de votre clé de sécurité.</translation>
    </message>
    <message>
        <source>Touch your security key.</source>
        <translation>Touchez votre clé de sécurité.</translation>
    </message>
    <message>
        <source>Which account?</source>
        <translation>Quel compte&#xa0;?</translation>
    </message>
    <message>
        <source>One try left. After that the security key locks.</source>
        <translation>Il reste un essai. Ensuite, la clé de sécurité se bloque.</translation>
    </message>
    <message>
        <source>That PIN is not right.</source>
        <translation>Ce code PIN n’est pas le bon.</translation>
    </message>
    <message>
        <source>Account %1</source>
        <translation>Compte %1</translation>
    </message>
    <message>
        <source>Transfers finished</source>
        <translation>Transferts terminés</translation>
    </message>
    <message>
        <source>“%1” is done.</source>
        <translation>«&#xa0;%1&#xa0;» est terminé.</translation>
    </message>
    <message numerus="yes">
        <source>%n files are done.</source>
        <translation>
            <numerusform>%n fichier est terminé.</numerusform>
            <numerusform>%n fichiers sont terminés.</numerusform>
        </translation>
    </message>
    <message>
        <source>Transfers failed</source>
        <translation>Échec des transferts</translation>
    </message>
    <message>
        <source>“%1” could not be transferred.</source>
        <translation>«&#xa0;%1&#xa0;» n’a pas pu être transféré.</translation>
    </message>
    <message numerus="yes">
        <source>%n files could not be transferred.</source>
        <translation>
            <numerusform>%n fichier n’a pas pu être transféré.</numerusform>
            <numerusform>%n fichiers n’ont pas pu être transférés.</numerusform>
        </translation>
    </message>
    <message>
        <source>Transfers finished, some failed</source>
        <translation>Transferts terminés, certains ont échoué</translation>
    </message>
    <message>
        <source>Done: %1. Could not be transferred: %2.</source>
        <translation>Terminés&#xa0;: %1. Non transférés&#xa0;: %2.</translation>
    </message>
    <message>
        <source>Transfers are cut off such that they can go on.</source>
        <translation>Les transferts sont interrompus de façon à pouvoir reprendre.</translation>
    </message>
    <message>
        <source>The system gives the program no more threads.</source>
        <translation>Le système n’accorde plus de threads au programme.</translation>
    </message>
    <message>
        <source>The system lets the program open no more files.</source>
        <translation>Le système ne laisse plus le programme ouvrir de fichiers.</translation>
    </message>
    <message>
        <source>There is not enough memory.</source>
        <translation>Il n’y a pas assez de mémoire.</translation>
    </message>
    <message>
        <source>It did not work, and nobody said why.</source>
        <translation>L’opération a échoué pour une raison inconnue.</translation>
    </message>
    <message>
        <source>The download is gone.</source>
        <translation>Le téléchargement a disparu.</translation>
    </message>
    <message>
        <source>This security key holds no passkey for Palvera.</source>
        <translation>Cette clé de sécurité ne contient aucune clé d’accès pour Palvera.</translation>
    </message>
    <message>
        <source>This security key has no PIN yet. Set one in your browser&apos;s settings.</source>
        <translation>Cette clé de sécurité n’a pas encore de code PIN. Définissez-en un dans les paramètres de votre navigateur.</translation>
    </message>
    <message>
        <source>This security key is locked: its PIN was wrong too often.</source>
        <translation>Cette clé de sécurité est bloquée&#xa0;: le code PIN a été faux trop souvent.</translation>
    </message>
    <message>
        <source>Too many wrong PINs. Take the security key out and put it in again.</source>
        <translation>Trop de codes PIN erronés. Retirez la clé de sécurité et réinsérez-la.</translation>
    </message>
    <message>
        <source>This security key was not touched in time. Try again.</source>
        <translation>Cette clé de sécurité n’a pas été touchée à temps. Réessayez.</translation>
    </message>
    <message>
        <source>This security key was taken out. Put it in and try again.</source>
        <translation>Cette clé de sécurité a été retirée. Insérez-la et réessayez.</translation>
    </message>
    <message>
        <source>This security key did not answer (%1).</source>
        <translation>Cette clé de sécurité n’a pas répondu (%1).</translation>
    </message>
    <message>
        <source>The new build could not be started: %1</source>
        <translation>Le nouveau build n’a pas pu être démarré&#xa0;: %1</translation>
    </message>
    <message>
        <source>The new build did not start.</source>
        <translation>Le nouveau build n’a pas démarré.</translation>
    </message>
    <message>
        <source>“%1” cannot be written: %2.</source>
        <translation>Impossible d’écrire «&#xa0;%1&#xa0;»&#xa0;: %2.</translation>
    </message>
    <message>
        <source>There is not enough memory to hold %1 MB at a time.</source>
        <translation>Il n’y a pas assez de mémoire pour %1 MB à la fois.</translation>
    </message>
    <message>
        <source>“%1” cannot be opened: %2.</source>
        <translation>Impossible d’ouvrir «&#xa0;%1&#xa0;»&#xa0;: %2.</translation>
    </message>
    <message>
        <source>“%1” has another name in some folder, so it is not written.</source>
        <translation>«&#xa0;%1&#xa0;» porte un autre nom dans un dossier&#xa0;; il n’est donc pas écrit.</translation>
    </message>
    <message>
        <source>“%1” is being downloaded already.</source>
        <translation>«&#xa0;%1&#xa0;» est déjà en cours de téléchargement.</translation>
    </message>
    <message>
        <source>“%1” cannot be created: %2.</source>
        <translation>Impossible de créer «&#xa0;%1&#xa0;»&#xa0;: %2.</translation>
    </message>
    <message>
        <source>“%1” cannot be read: %2.</source>
        <translation>Impossible de lire «&#xa0;%1&#xa0;»&#xa0;: %2.</translation>
    </message>
    <message>
        <source>There is not enough room for “%1”: it needs %2, and %3 is free.</source>
        <translation>Il n’y a pas assez de place pour «&#xa0;%1&#xa0;»&#xa0;: il faut %2, et %3 sont libres.</translation>
    </message>
    <message>
        <source>“%1” was moved or removed while it was being downloaded.</source>
        <translation>«&#xa0;%1&#xa0;» a été déplacé ou supprimé pendant le téléchargement.</translation>
    </message>
    <message>
        <source>“%1” cannot be made: %2.</source>
        <translation>Impossible de créer «&#xa0;%1&#xa0;»&#xa0;: %2.</translation>
    </message>
    <message>
        <source>“%1” cannot be locked: %2.</source>
        <translation>Impossible de verrouiller «&#xa0;%1&#xa0;»&#xa0;: %2.</translation>
    </message>
    <message>
        <source>That counts only for now: %1 cannot be written.</source>
        <translation>Cela ne vaut que pour l’instant&#xa0;: impossible d’écrire %1.</translation>
    </message>
    <message>
        <source>%1s</source>
        <translation>%1&#xa0;s</translation>
    </message>
    <message>
        <source>%1m %2s</source>
        <translation>%1&#xa0;min %2&#xa0;s</translation>
    </message>
    <message>
        <source>%1h %2m</source>
        <translation>%1&#xa0;h %2&#xa0;min</translation>
    </message>
    <message>
        <source>%1%</source>
        <translation>%1&#xa0;%</translation>
    </message>
    <message>
        <source>The sign-in that was kept in %1 could not be removed.</source>
        <translation>La connexion conservée dans %1 n’a pas pu être supprimée.</translation>
    </message>
    <message>
        <source>The platform&apos;s sign-in ends with the program.</source>
        <translation>La connexion à la plateforme prend fin avec le programme.</translation>
    </message>
    <message>
        <source>The sign-in that is kept in %1 cannot be read.</source>
        <translation>La connexion conservée dans %1 ne peut pas être lue.</translation>
    </message>
    <message>
        <source>The server&apos;s name was not found.</source>
        <translation>Le nom du serveur est introuvable.</translation>
    </message>
    <message>
        <source>The proxy&apos;s name was not found.</source>
        <translation>Le nom du proxy est introuvable.</translation>
    </message>
    <message>
        <source>Could not connect to the server.</source>
        <translation>Impossible de se connecter au serveur.</translation>
    </message>
    <message>
        <source>The proxy made no connection.</source>
        <translation>Le proxy n’a établi aucune connexion.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate is not trusted.</source>
        <translation>Le certificat du serveur n’est pas fiable.</translation>
    </message>
    <message>
        <source>No encrypted connection to the server could be made.</source>
        <translation>Aucune connexion chiffrée au serveur n’a pu être établie.</translation>
    </message>
    <message>
        <source>The trusted certificates could not be read.</source>
        <translation>Les certificats de confiance n’ont pas pu être lus.</translation>
    </message>
    <message>
        <source>The server did not answer.</source>
        <translation>Le serveur n’a pas répondu.</translation>
    </message>
    <message>
        <source>The server&apos;s answer was not understood.</source>
        <translation>La réponse du serveur n’a pas été comprise.</translation>
    </message>
    <message>
        <source>There is not enough memory for the request.</source>
        <translation>Il n’y a pas assez de mémoire pour la requête.</translation>
    </message>
    <message>
        <source>The connection was lost.</source>
        <translation>La connexion a été perdue.</translation>
    </message>
    <message>
        <source>The proxy asks for a name and a password.</source>
        <translation>Le proxy demande un nom et un mot de passe.</translation>
    </message>
    <message>
        <source>The proxy could not reach the server.</source>
        <translation>Le proxy n’a pas pu joindre le serveur.</translation>
    </message>
    <message>
        <source>The proxy refused the connection.</source>
        <translation>Le proxy a refusé la connexion.</translation>
    </message>
    <message>
        <source>No answer within %1 seconds.</source>
        <translation>Aucune réponse en %1 secondes.</translation>
    </message>
    <message>
        <source>The request took longer than %1 seconds.</source>
        <translation>La requête a duré plus de %1 secondes.</translation>
    </message>
    <message>
        <source>Too many files are open.</source>
        <translation>Trop de fichiers sont ouverts.</translation>
    </message>
    <message>
        <source>The server&apos;s answer is too large.</source>
        <translation>La réponse du serveur est trop grande.</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>Il n’y a pas de connexion réseau.</translation>
    </message>
    <message>
        <source>The address is not valid.</source>
        <translation>L’adresse n’est pas valide.</translation>
    </message>
    <message>
        <source>The server sends on to an address that is not encrypted.</source>
        <translation>Le serveur redirige vers une adresse non chiffrée.</translation>
    </message>
    <message>
        <source>The server sends on again and again.</source>
        <translation>Le serveur redirige sans fin.</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Fichier</translation>
    </message>
    <message>
        <source>The platform does not say where this file is stored.</source>
        <translation>La plateforme n’indique pas où ce fichier est stocké.</translation>
    </message>
    <message>
        <source>The platform does not say on which deliverable this file is.</source>
        <translation>La plateforme n’indique pas à quel livrable appartient ce fichier.</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Terminé</translation>
    </message>
    <message>
        <source>Uploads</source>
        <translation>Téléversements</translation>
    </message>
    <message>
        <source>Masters added before a deal exists</source>
        <translation>Masters ajoutés avant tout accord</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Dossier</translation>
    </message>
    <message>
        <source>A file without a name</source>
        <translation>Un fichier sans nom</translation>
    </message>
    <message>
        <source>Today %1</source>
        <translation>Aujourd’hui %1</translation>
    </message>
    <message>
        <source>Yesterday %1</source>
        <translation>Hier %1</translation>
    </message>
    <message>
        <source>Nothing in Uploads yet</source>
        <translation>Rien encore dans «&#xa0;Téléversements&#xa0;»</translation>
    </message>
    <message>
        <source>Drop master files here, or choose Upload. They can be added to projects later.</source>
        <translation>Déposez des fichiers master ici ou choisissez «&#xa0;Téléverser&#xa0;». Ils pourront être ajoutés à des projets plus tard.</translation>
    </message>
    <message>
        <source>Nothing matches</source>
        <translation>Aucun résultat</translation>
    </message>
    <message>
        <source>Try another word, or clear the search.</source>
        <translation>Essayez un autre mot ou effacez la recherche.</translation>
    </message>
    <message>
        <source>Nothing delivered yet</source>
        <translation>Rien encore de livré</translation>
    </message>
    <message>
        <source>Files delivered on the organisation&apos;s projects appear here. Masters added before a deal exists live under Uploads.</source>
        <translation>Les fichiers livrés pour les projets de l’organisation apparaissent ici. Les masters ajoutés avant tout accord se trouvent sous «&#xa0;Téléversements&#xa0;».</translation>
    </message>
    <message>
        <source>Try another word or kind, or clear the search.</source>
        <translation>Essayez un autre mot ou un autre genre, ou effacez la recherche.</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Télécharger</translation>
    </message>
    <message numerus="yes">
        <source>Download %n files</source>
        <translation>
            <numerusform>Télécharger %n fichier</numerusform>
            <numerusform>Télécharger %n fichiers</numerusform>
        </translation>
    </message>
    <message>
        <source>Drop to add to %1</source>
        <translation>Déposez pour ajouter à «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>1 folder was left out: only files can be added. %1</source>
        <translation>1 dossier a été laissé de côté&#xa0;: seuls des fichiers peuvent être ajoutés. %1</translation>
    </message>
    <message numerus="yes">
        <source>%n folders were left out: only files can be added. %1</source>
        <translation>
            <numerusform>%n dossier a été laissé de côté&#xa0;: seuls des fichiers peuvent être ajoutés. %1</numerusform>
            <numerusform>%n dossiers ont été laissés de côté&#xa0;: seuls des fichiers peuvent être ajoutés. %1</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 is on its way already.</source>
        <translation>%1 est déjà en route.</translation>
    </message>
    <message numerus="yes">
        <source>%n files are on their way already. %1</source>
        <translation>
            <numerusform>%n fichier est déjà en route. %1</numerusform>
            <numerusform>%n fichiers sont déjà en route. %1</numerusform>
        </translation>
    </message>
    <message>
        <source>The platform no longer has “%1”. Nothing was sent.</source>
        <translation>La plateforme n’a plus «&#xa0;%1&#xa0;». Rien n’a été envoyé.</translation>
    </message>
    <message>
        <source>Filled</source>
        <translation>Rempli</translation>
    </message>
    <message>
        <source>Empty</source>
        <translation>Vide</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Tous</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>En attente</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>Suspendu</translation>
    </message>
    <message>
        <source>Transferring</source>
        <translation>En transfert</translation>
    </message>
    <message>
        <source>The delivered file</source>
        <translation>Le fichier livré</translation>
    </message>
    <message>
        <source>“%1” is a folder. Drop the file itself.</source>
        <translation>«&#xa0;%1&#xa0;» est un dossier. Déposez le fichier lui-même.</translation>
    </message>
    <message>
        <source>%1 Left out: %2.</source>
        <translation>%1 Laissés de côté&#xa0;: %2.</translation>
    </message>
    <message>
        <source>about %1</source>
        <translation>vers %1</translation>
    </message>
    <message>
        <source>about %1 tomorrow</source>
        <translation>demain vers %1</translation>
    </message>
    <message>
        <source>about %1 on %2</source>
        <translation>%2 vers %1</translation>
    </message>
    <message>
        <source>more than %1 left</source>
        <translation>plus de %1 restants</translation>
    </message>
    <message>
        <source>%1 left</source>
        <translation>%1 restants</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
    <message>
        <source>%1 downloaded</source>
        <translation>%1 téléchargés</translation>
    </message>
    <message>
        <source>Not begun</source>
        <translation>Pas commencé</translation>
    </message>
    <message>
        <source>The file is not where it was.</source>
        <translation>Le fichier n’est plus à sa place.</translation>
    </message>
    <message>
        <source>1 upload was cut off.</source>
        <translation>1 téléversement a été interrompu.</translation>
    </message>
    <message numerus="yes">
        <source>%n uploads were cut off.</source>
        <translation>
            <numerusform>%n téléversement a été interrompu.</numerusform>
            <numerusform>%n téléversements ont été interrompus.</numerusform>
        </translation>
    </message>
    <message>
        <source>1 download was cut off.</source>
        <translation>1 téléchargement a été interrompu.</translation>
    </message>
    <message numerus="yes">
        <source>%n downloads were cut off.</source>
        <translation>
            <numerusform>%n téléchargement a été interrompu.</numerusform>
            <numerusform>%n téléchargements ont été interrompus.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 and %2 were cut off.</source>
        <translation>%1 et %2 ont été interrompus.</translation>
    </message>
    <message>
        <source>1 upload</source>
        <translation>1 téléversement</translation>
    </message>
    <message numerus="yes">
        <source>%n uploads</source>
        <translation>
            <numerusform>%n téléversement</numerusform>
            <numerusform>%n téléversements</numerusform>
        </translation>
    </message>
    <message>
        <source>1 download</source>
        <translation>1 téléchargement</translation>
    </message>
    <message numerus="yes">
        <source>%n downloads</source>
        <translation>
            <numerusform>%n téléchargement</numerusform>
            <numerusform>%n téléchargements</numerusform>
        </translation>
    </message>
    <message>
        <source>Start now</source>
        <translation>Démarrer maintenant</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Suspendre</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Reprendre</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>Stop…</source>
        <translation>Arrêter…</translation>
    </message>
    <message>
        <source>Show in folder</source>
        <translation>Afficher dans le dossier</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message>
        <source>Show deliverable</source>
        <translation>Afficher le livrable</translation>
    </message>
    <message>
        <source>Copy error</source>
        <translation>Copier l’erreur</translation>
    </message>
    <message>
        <source>Copy name</source>
        <translation>Copier le nom</translation>
    </message>
    <message>
        <source>Remove from list</source>
        <translation>Retirer de la liste</translation>
    </message>
    <message>
        <source>Done · %1</source>
        <translation>Terminé · %1</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>Arrêté</translation>
    </message>
    <message>
        <source>upload</source>
        <translation>téléversement</translation>
    </message>
    <message>
        <source>download</source>
        <translation>téléchargement</translation>
    </message>
    <message>
        <source>%1 percent</source>
        <translation>%1 pour cent</translation>
    </message>
    <message>
        <source>This computer is not connected to a network.</source>
        <translation>Cet ordinateur n’est connecté à aucun réseau.</translation>
    </message>
    <message>
        <source>The platform cannot be reached.</source>
        <translation>La plateforme est injoignable.</translation>
    </message>
    <message>
        <source>The connection has come to a standstill.</source>
        <translation>La connexion est à l’arrêt.</translation>
    </message>
    <message>
        <source>%1, size not known yet</source>
        <translation>%1, taille encore inconnue</translation>
    </message>
    <message>
        <source>Size not known yet</source>
        <translation>Taille encore inconnue</translation>
    </message>
    <message>
        <source>The platform is busy.</source>
        <translation>La plateforme est occupée.</translation>
    </message>
    <message>
        <source>Uploading</source>
        <translation>Téléversement</translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation>Téléchargement</translation>
    </message>
    <message>
        <source>%1 Trying again in %2</source>
        <translation>%1 Nouvel essai dans %2</translation>
    </message>
    <message>
        <source>Stop this upload?</source>
        <translation>Arrêter ce téléversement&#xa0;?</translation>
    </message>
    <message>
        <source>Stop this download?</source>
        <translation>Arrêter ce téléchargement&#xa0;?</translation>
    </message>
    <message>
        <source>%1 has come down already. It is kept on disk.</source>
        <translation>%1 ont déjà été téléchargés. Ils sont conservés sur le disque.</translation>
    </message>
    <message>
        <source>%1 has gone up already. Stopping throws it away, so nothing half delivered is left in storage.</source>
        <translation>%1 ont déjà été téléversés. L’arrêt les supprime, pour que rien d’à moitié livré ne reste dans le stockage.</translation>
    </message>
    <message>
        <source>%1 of %2 parts done</source>
        <translation>%1 parties sur %2 terminées</translation>
    </message>
    <message>
        <source>%1 sec</source>
        <translation>%1&#xa0;s</translation>
    </message>
    <message>
        <source>%1 min, %2 sec</source>
        <translation>%1&#xa0;min, %2&#xa0;s</translation>
    </message>
    <message>
        <source>Video</source>
        <translation>Vidéo</translation>
    </message>
    <message>
        <source>Audio</source>
        <translation>Audio</translation>
    </message>
    <message>
        <source>Subtitles</source>
        <translation>Sous-titres</translation>
    </message>
    <message>
        <source>Artwork</source>
        <translation>Visuels</translation>
    </message>
    <message>
        <source>Documents</source>
        <translation>Documents</translation>
    </message>
    <message>
        <source>Metadata</source>
        <translation>Métadonnées</translation>
    </message>
    <message>
        <source>Textless</source>
        <translation>Textless</translation>
    </message>
    <message>
        <source>“%1”</source>
        <translation>«&#xa0;%1&#xa0;»</translation>
    </message>
    <message numerus="yes">
        <source>%n more</source>
        <translation>
            <numerusform>%n autre</numerusform>
            <numerusform>%n autres</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1 et %2</translation>
    </message>
    <message>
        <source>PV_API is ignored: “%1” is not an address that begins with http:// or https://.</source>
        <translation>PV_API est ignoré&#xa0;: «&#xa0;%1&#xa0;» n’est pas une adresse commençant par http:// ou https://.</translation>
    </message>
    <message>
        <source>The platform&apos;s address for storage is not encrypted, so it was not used.</source>
        <translation>L’adresse de stockage de la plateforme n’est pas chiffrée&#xa0;; elle n’a donc pas été utilisée.</translation>
    </message>
    <message>
        <source>That was not an answer of the platform. A proxy or a sign-in page of the network may stand in between.</source>
        <translation>Ce n’était pas une réponse de la plateforme. Un proxy ou une page de connexion du réseau s’interpose peut-être.</translation>
    </message>
    <message>
        <source>The platform&apos;s answer could not be read: %1</source>
        <translation>La réponse de la plateforme n’a pas pu être lue&#xa0;: %1</translation>
    </message>
    <message>
        <source>The platform answered %1.</source>
        <translation>La plateforme a répondu %1.</translation>
    </message>
    <message>
        <source>Extras</source>
        <translation>Bonus</translation>
    </message>
    <message>
        <source>S%1 E%2</source>
        <translation>S%1 E%2</translation>
    </message>
    <message>
        <source>Season %1</source>
        <translation>Saison %1</translation>
    </message>
    <message>
        <source>The JSON is too large.</source>
        <translation>Le JSON est trop grand.</translation>
    </message>
    <message>
        <source>The JSON does not parse: %1.</source>
        <translation>Le JSON est mal formé&#xa0;: %1.</translation>
    </message>
    <message>
        <source>The JSON is not an object.</source>
        <translation>Le JSON n’est pas un objet.</translation>
    </message>
    <message>
        <source>“%1” is missing.</source>
        <translation>«&#xa0;%1&#xa0;» manque.</translation>
    </message>
    <message>
        <source>“%1” is not what it should be.</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas ce qu’il devrait être.</translation>
    </message>
    <message>
        <source>The single sign-on step named no address.</source>
        <translation>L’étape d’authentification unique n’a indiqué aucune adresse.</translation>
    </message>
    <message>
        <source>An unknown sign-in step: %1.</source>
        <translation>Étape de connexion inconnue&#xa0;: %1.</translation>
    </message>
    <message>
        <source>Sign in to Live</source>
        <translation>Se connecter à Live</translation>
    </message>
    <message>
        <source>Sign in to Staging</source>
        <translation>Se connecter à Staging</translation>
    </message>
    <message>
        <source>Sign in</source>
        <translation>Se connecter</translation>
    </message>
    <message>
        <source>The sign-in window could not open.</source>
        <translation>La fenêtre de connexion n’a pas pu s’ouvrir.</translation>
    </message>
    <message>
        <source>The sign-in window closed before it finished.</source>
        <translation>La fenêtre de connexion s’est fermée avant la fin.</translation>
    </message>
    <message>
        <source>The platform sent a challenge this app could not read.</source>
        <translation>La plateforme a envoyé un défi que cette application n’a pas pu lire.</translation>
    </message>
    <message>
        <source>The platform asked for a passkey of another site.</source>
        <translation>La plateforme a demandé une clé d’accès d’un autre site.</translation>
    </message>
    <message numerus="yes">
        <source>That PIN is not right. %n tries left.</source>
        <translation>
            <numerusform>Ce code PIN n’est pas le bon. Encore %n essai.</numerusform>
            <numerusform>Ce code PIN n’est pas le bon. Encore %n essais.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 did not finish%2. Try again, or sign in another way.</source>
        <translation>%1 n’a pas abouti%2. Réessayez ou connectez-vous autrement.</translation>
    </message>
    <message>
        <source>The sign-in in the browser</source>
        <translation>La connexion dans le navigateur</translation>
    </message>
    <message>
        <source>Your organisation&apos;s sign-in</source>
        <translation>La connexion de votre organisation</translation>
    </message>
    <message>
        <source>The passkey sign-in</source>
        <translation>La connexion par clé d’accès</translation>
    </message>
    <message>
        <source>The platform has not confirmed the file.</source>
        <translation>La plateforme n’a pas confirmé le fichier.</translation>
    </message>
    <message>
        <source>There are too many files named “%1” in that folder.</source>
        <translation>Il y a trop de fichiers nommés «&#xa0;%1&#xa0;» dans ce dossier.</translation>
    </message>
    <message>
        <source>“%1” cannot be removed.</source>
        <translation>Impossible de supprimer «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>Storage sent other bytes than those asked for.</source>
        <translation>Le stockage a envoyé d’autres octets que ceux demandés.</translation>
    </message>
    <message>
        <source>Storage sent %1 bytes of a chunk of %2.</source>
        <translation>Le stockage a envoyé %1 octets d’un bloc de %2.</translation>
    </message>
    <message>
        <source>The file changed in storage while it was being downloaded. Download it again.</source>
        <translation>Le fichier a changé dans le stockage pendant le téléchargement. Téléchargez-le de nouveau.</translation>
    </message>
    <message>
        <source>That file could not be reached (storage answered %1).</source>
        <translation>Ce fichier est injoignable (le stockage a répondu %1).</translation>
    </message>
    <message>
        <source>Storage did not say how large the file is.</source>
        <translation>Le stockage n’a pas indiqué la taille du fichier.</translation>
    </message>
    <message>
        <source>That file is empty.</source>
        <translation>Ce fichier est vide.</translation>
    </message>
    <message>
        <source>The progress of this download cannot be kept, so it must not be cut off: %1</source>
        <translation>La progression de ce téléchargement ne peut pas être conservée&#xa0;; il ne doit donc pas être interrompu&#xa0;: %1</translation>
    </message>
    <message>
        <source>Storage answered %1 on a chunk.</source>
        <translation>Le stockage a répondu %1 pour un bloc.</translation>
    </message>
    <message>
        <source>No network.</source>
        <translation>Pas de réseau.</translation>
    </message>
    <message>
        <source>This upload cannot be recorded under the name “%1”.</source>
        <translation>Ce téléversement ne peut pas être enregistré sous le nom «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>The upload failed.</source>
        <translation>Le téléversement a échoué.</translation>
    </message>
    <message>
        <source>The platform gave an address that is none.</source>
        <translation>La plateforme a fourni une adresse qui n’en est pas une.</translation>
    </message>
    <message>
        <source>Storage answered %1 on a part.</source>
        <translation>Le stockage a répondu %1 pour une partie.</translation>
    </message>
    <message>
        <source>Storage answers %1.</source>
        <translation>Le stockage répond %1.</translation>
    </message>
    <message>
        <source>The storage service returned no ETag.</source>
        <translation>Le service de stockage n’a renvoyé aucun ETag.</translation>
    </message>
    <message>
        <source>The connection stopped moving for 20 seconds.</source>
        <translation>La connexion est restée immobile pendant 20 secondes.</translation>
    </message>
    <message>
        <source>Invalid number of keys found, expected one.</source>
        <translation>Nombre de clés non valide, une seule attendue.</translation>
    </message>
    <message>
        <source>No answer from storage for %1 seconds.</source>
        <translation>Aucune réponse du stockage depuis %1 secondes.</translation>
    </message>
    <message>
        <source>“%1” is on its way there already.</source>
        <translation>«&#xa0;%1&#xa0;» est déjà en route vers cet endroit.</translation>
    </message>
    <message>
        <source>This file is being sent already. Waiting for that.</source>
        <translation>Ce fichier est déjà en cours d’envoi. Attente de la fin.</translation>
    </message>
    <message>
        <source>The file changed while it was being sent, so it was not delivered. Send it again.</source>
        <translation>Le fichier a changé pendant l’envoi&#xa0;; il n’a donc pas été livré. Envoyez-le de nouveau.</translation>
    </message>
    <message>
        <source>“%1” is no longer in %2.</source>
        <translation>«&#xa0;%1&#xa0;» n’est plus dans %2.</translation>
    </message>
    <message>
        <source>“%1” is a folder. Only files can be sent.</source>
        <translation>«&#xa0;%1&#xa0;» est un dossier. Seuls des fichiers peuvent être envoyés.</translation>
    </message>
    <message>
        <source>“%1” is not an ordinary file.</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un fichier ordinaire.</translation>
    </message>
    <message>
        <source>The platform does not know this upload any more: it is sent from its start.</source>
        <translation>La plateforme ne connaît plus ce téléversement&#xa0;: il est envoyé depuis le début.</translation>
    </message>
    <message>
        <source>Waiting for the platform.</source>
        <translation>En attente de la plateforme.</translation>
    </message>
    <message>
        <source>Finishing on the platform.</source>
        <translation>Finalisation sur la plateforme.</translation>
    </message>
    <message>
        <source>“%1” has changed since: it is sent from its start.</source>
        <translation>«&#xa0;%1&#xa0;» a changé depuis&#xa0;: il est envoyé depuis le début.</translation>
    </message>
    <message>
        <source>The upload of “%1” that was cut off here is kept.</source>
        <translation>Le téléversement de «&#xa0;%1&#xa0;» interrompu ici est conservé.</translation>
    </message>
    <message>
        <source>“%1” has another name by now, “%2”, and must be sent anew.</source>
        <translation>«&#xa0;%1&#xa0;» porte désormais un autre nom, «&#xa0;%2&#xa0;», et doit être envoyé à nouveau.</translation>
    </message>
    <message>
        <source>The platform cut the file into parts that do not add up to it.</source>
        <translation>La plateforme a découpé le fichier en parties dont la somme ne correspond pas.</translation>
    </message>
    <message>
        <source>The progress of this upload cannot be kept, so it must not be cut off: %1</source>
        <translation>La progression de ce téléversement ne peut pas être conservée&#xa0;; il ne doit donc pas être interrompu&#xa0;: %1</translation>
    </message>
    <message>
        <source>The upload is missing parts (%1 of %2). Resume it to send the rest.</source>
        <translation>Il manque des parties au téléversement (%1 sur %2). Reprenez-le pour envoyer le reste.</translation>
    </message>
    <message>
        <source>The platform did not sign part %1.</source>
        <translation>La plateforme n’a pas signé la partie %1.</translation>
    </message>
    <message>
        <source>That file has no address.</source>
        <translation>Ce fichier n’a pas d’adresse.</translation>
    </message>
    <message>
        <source>Storage has only %1 of “%2”, and the platform lists %3.</source>
        <translation>Le stockage n’a que %1 de «&#xa0;%2&#xa0;», et la plateforme annonce %3.</translation>
    </message>
    <message>
        <source>Storage has %1 of “%2”, more than the %3 that the platform lists.</source>
        <translation>Le stockage a %1 de «&#xa0;%2&#xa0;», plus que les %3 annoncés par la plateforme.</translation>
    </message>
    <message>
        <source>“%1” is being downloaded to that folder already.</source>
        <translation>«&#xa0;%1&#xa0;» est déjà en cours de téléchargement dans ce dossier.</translation>
    </message>
    <message>
        <source>waiting</source>
        <translation>en attente</translation>
    </message>
    <message>
        <source>running</source>
        <translation>en cours</translation>
    </message>
    <message>
        <source>retrying</source>
        <translation>nouvel essai</translation>
    </message>
    <message>
        <source>paused</source>
        <translation>suspendu</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>échoué</translation>
    </message>
    <message>
        <source>done</source>
        <translation>terminé</translation>
    </message>
    <message>
        <source>stopped</source>
        <translation>arrêté</translation>
    </message>
    <message>
        <source>Second try.</source>
        <translation>Deuxième essai.</translation>
    </message>
    <message>
        <source>Third try.</source>
        <translation>Troisième essai.</translation>
    </message>
    <message>
        <source>Fourth try.</source>
        <translation>Quatrième essai.</translation>
    </message>
    <message>
        <source>Fifth try.</source>
        <translation>Cinquième essai.</translation>
    </message>
    <message>
        <source>Sixth try.</source>
        <translation>Sixième essai.</translation>
    </message>
    <message>
        <source>Seventh try.</source>
        <translation>Septième essai.</translation>
    </message>
    <message>
        <source>Eighth try.</source>
        <translation>Huitième essai.</translation>
    </message>
    <message>
        <source>Waiting for you to sign in</source>
        <translation>En attente de votre connexion</translation>
    </message>
    <message>
        <source>Assets</source>
        <translation>Ressources</translation>
    </message>
    <message>
        <source>Files are being transferred.</source>
        <translation>Des fichiers sont en cours de transfert.</translation>
    </message>
    <message>
        <source>The update could not be stored: %1.</source>
        <translation>La mise à jour n’a pas pu être enregistrée&#xa0;: %1.</translation>
    </message>
    <message>
        <source>The update is too large: %1.</source>
        <translation>La mise à jour est trop grande&#xa0;: %1.</translation>
    </message>
    <message>
        <source>There is not enough room on the disk for the update of %1.</source>
        <translation>Il n’y a pas assez de place sur le disque pour la mise à jour de %1.</translation>
    </message>
    <message>
        <source>“%1” cannot be made anew: %2.</source>
        <translation>Impossible de recréer «&#xa0;%1&#xa0;»&#xa0;: %2.</translation>
    </message>
    <message>
        <source>Palvera %1, build %2, is available.</source>
        <translation>Palvera %1, build %2, est disponible.</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installer</translation>
    </message>
    <message>
        <source>Checking</source>
        <translation>Vérification</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Redémarrer</translation>
    </message>
    <message>
        <source>Palvera %1 is ready. Restart to use it; you stay signed in.</source>
        <translation>Palvera %1 est prêt. Redémarrez pour l’utiliser&#xa0;; vous restez connecté.</translation>
    </message>
    <message>
        <source>Restarting</source>
        <translation>Redémarrage</translation>
    </message>
    <message>
        <source>Retry update</source>
        <translation>Réessayer la mise à jour</translation>
    </message>
    <message>
        <source>A transfer is still moving. Uploads stop and wait under Interrupted, and pick up from the part they reached.</source>
        <translation>Un transfert est encore en cours. Les téléversements s’arrêtent, attendent sous «&#xa0;Interrompus&#xa0;» et reprennent à la partie atteinte.</translation>
    </message>
    <message numerus="yes">
        <source>%n transfers are still moving. Uploads stop and wait under Interrupted, and pick up from the part they reached.</source>
        <translation>
            <numerusform>%n transfert est encore en cours. Les téléversements s’arrêtent, attendent sous «&#xa0;Interrompus&#xa0;» et reprennent à la partie atteinte.</numerusform>
            <numerusform>%n transferts sont encore en cours. Les téléversements s’arrêtent, attendent sous «&#xa0;Interrompus&#xa0;» et reprennent à la partie atteinte.</numerusform>
        </translation>
    </message>
    <message>
        <source>None yet: the update feed does not answer.</source>
        <translation>Aucune encore&#xa0;: le flux des mises à jour ne répond pas.</translation>
    </message>
    <message>
        <source>None yet</source>
        <translation>Aucune encore</translation>
    </message>
    <message>
        <source>%1; the update feed does not answer.</source>
        <translation>%1&#xa0;; le flux des mises à jour ne répond pas.</translation>
    </message>
    <message>
        <source>Palvera is up to date</source>
        <translation>Palvera est à jour</translation>
    </message>
    <message>
        <source>You have %1.</source>
        <translation>Vous avez %1.</translation>
    </message>
    <message>
        <source>Could not check for updates</source>
        <translation>Impossible de rechercher des mises à jour</translation>
    </message>
    <message>
        <source>The update feed did not answer. Check your connection and try again.</source>
        <translation>Le flux des mises à jour n’a pas répondu. Vérifiez votre connexion et réessayez.</translation>
    </message>
    <message>
        <source>The preferences could not be read. They begin anew; the file is now %1.</source>
        <translation>Les préférences n’ont pas pu être lues. Elles repartent à zéro&#xa0;; le fichier est désormais %1.</translation>
    </message>
    <message>
        <source>The preferences in %1 cannot be read.</source>
        <translation>Les préférences dans %1 ne peuvent pas être lues.</translation>
    </message>
</context>
<context>
    <name>ReloadButton</name>
    <message>
        <source>Reload</source>
        <translation>Recharger</translation>
    </message>
</context>
<context>
    <name>RootView</name>
    <message>
        <source>Not encrypted</source>
        <translation>Non chiffré</translation>
    </message>
    <message>
        <source>The service address that PV_API names is not encrypted: others on the way can read along.</source>
        <translation>L’adresse de service indiquée par PV_API n’est pas chiffrée&#xa0;: d’autres peuvent lire en chemin.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Send anyway</source>
        <translation>Envoyer quand même</translation>
    </message>
    <message>
        <source>Check this file before it goes</source>
        <translation>Vérifiez ce fichier avant l’envoi</translation>
    </message>
    <message>
        <source>Stay signed in</source>
        <translation>Rester connecté</translation>
    </message>
    <message>
        <source>Sign out</source>
        <translation>Se déconnecter</translation>
    </message>
    <message>
        <source>Sign out while files are moving?</source>
        <translation>Se déconnecter pendant que des fichiers sont transférés&#xa0;?</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Clear the search</source>
        <translation>Effacer la recherche</translation>
    </message>
</context>
<context>
    <name>SecureField</name>
    <message>
        <source>Caps Lock is on</source>
        <translation>Verrouillage des majuscules activé</translation>
    </message>
    <message>
        <source>Hide what is entered</source>
        <translation>Masquer la saisie</translation>
    </message>
    <message>
        <source>Show what is entered</source>
        <translation>Afficher la saisie</translation>
    </message>
</context>
<context>
    <name>SendingDialogs</name>
    <message>
        <source>Send</source>
        <translation>Envoyer</translation>
    </message>
    <message>
        <source>Send it here</source>
        <translation>L’envoyer ici</translation>
    </message>
    <message>
        <source>Send a full-length file to Textless elements?</source>
        <translation>Envoyer un fichier de durée complète à «&#xa0;Textless elements&#xa0;»&#xa0;?</translation>
    </message>
</context>
<context>
    <name>SettingsSheet</name>
    <message>
        <source>Settings</source>
        <translation>Paramètres</translation>
    </message>
    <message>
        <source>Downloads</source>
        <translation>Téléchargements</translation>
    </message>
    <message>
        <source>Asked at the first download</source>
        <translation>Demandé au premier téléchargement</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Dossier</translation>
    </message>
    <message>
        <source>Change the downloads folder…</source>
        <translation>Modifier le dossier des téléchargements…</translation>
    </message>
    <message>
        <source>Change…</source>
        <translation>Modifier…</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>Transferts</translation>
    </message>
    <message>
        <source>Uploads at once</source>
        <translation>Téléversements simultanés</translation>
    </message>
    <message>
        <source>Downloads at once</source>
        <translation>Téléchargements simultanés</translation>
    </message>
    <message>
        <source>Give MB/s, from 0.1 on, or leave it empty.</source>
        <translation>Indiquez des MB/s, à partir de 0,1, ou laissez vide.</translation>
    </message>
    <message>
        <source>Upload limit, MB/s</source>
        <translation>Limite de téléversement, MB/s</translation>
    </message>
    <message>
        <source>Download limit, MB/s</source>
        <translation>Limite de téléchargement, MB/s</translation>
    </message>
    <message>
        <source>Give times such as 08:00.</source>
        <translation>Indiquez des heures comme 08:00.</translation>
    </message>
    <message>
        <source>Off: the limits hold all day long.</source>
        <translation>Désactivé&#xa0;: les limites valent toute la journée.</translation>
    </message>
    <message>
        <source>Limit only between</source>
        <translation>Limiter seulement entre</translation>
    </message>
    <message>
        <source>Limit from</source>
        <translation>Limite à partir de</translation>
    </message>
    <message>
        <source>Limit to</source>
        <translation>Limite jusqu’à</translation>
    </message>
    <message>
        <source>While files move</source>
        <translation>Pendant les transferts</translation>
    </message>
    <message>
        <source>Keep the computer awake</source>
        <translation>Garder l’ordinateur éveillé</translation>
    </message>
    <message>
        <source>Notify when the last one has ended</source>
        <translation>Signaler la fin du dernier</translation>
    </message>
    <message>
        <source>When the window is closed</source>
        <translation>À la fermeture de la fenêtre</translation>
    </message>
    <message>
        <source>This desktop shows no tray, so that closing the window quits.</source>
        <translation>Ce bureau n’affiche pas de zone de notification&#xa0;; fermer la fenêtre quitte donc le programme.</translation>
    </message>
    <message>
        <source>Palvera stays in the tray, and starts there with your session.</source>
        <translation>Palvera reste dans la zone de notification et y démarre avec votre session.</translation>
    </message>
    <message>
        <source>Stay in the background</source>
        <translation>Rester en arrière-plan</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Choose where downloads go</source>
        <translation>Choisir la destination des téléchargements</translation>
    </message>
    <message>
        <source>No limit</source>
        <translation>Illimité</translation>
    </message>
    <message>
        <source>Tell screen readers how far files are</source>
        <translation>Annoncer l’avancement aux lecteurs d’écran</translation>
    </message>
</context>
<context>
    <name>ShortcutsSheet</name>
    <message>
        <source>Alt+Left</source>
        <translation>Alt+Gauche</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Retour</translation>
    </message>
    <message>
        <source>F5</source>
        <translation>F5</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Recharger</translation>
    </message>
    <message>
        <source>Ctrl+F</source>
        <translation>Ctrl+F</translation>
    </message>
    <message>
        <source>Search the list</source>
        <translation>Rechercher dans la liste</translation>
    </message>
    <message>
        <source>Ctrl+Shift+T</source>
        <translation>Ctrl+Shift+T</translation>
    </message>
    <message>
        <source>Show the transfers</source>
        <translation>Afficher les transferts</translation>
    </message>
    <message>
        <source>F10</source>
        <translation>F10</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menu</translation>
    </message>
    <message>
        <source>Ctrl+,</source>
        <translation>Ctrl+,</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Paramètres</translation>
    </message>
    <message>
        <source>Ctrl+?</source>
        <translation>Ctrl+?</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>Raccourcis clavier</translation>
    </message>
    <message>
        <source>F1</source>
        <translation>F1</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Aide</translation>
    </message>
    <message>
        <source>Ctrl+U</source>
        <translation>Ctrl+U</translation>
    </message>
    <message>
        <source>Check for updates</source>
        <translation>Rechercher des mises à jour</translation>
    </message>
    <message>
        <source>Ctrl+W</source>
        <translation>Ctrl+W</translation>
    </message>
    <message>
        <source>Close the window</source>
        <translation>Fermer la fenêtre</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Espace</translation>
    </message>
    <message>
        <source>Pause or resume the transfer</source>
        <translation>Suspendre ou reprendre le transfert</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Suppr</translation>
    </message>
    <message>
        <source>Stop the transfer, or take it off the list</source>
        <translation>Arrêter le transfert ou le retirer de la liste</translation>
    </message>
    <message>
        <source>Ctrl+Up, Ctrl+Down</source>
        <translation>Ctrl+Haut, Ctrl+Bas</translation>
    </message>
    <message>
        <source>Move the transfer in the queue</source>
        <translation>Déplacer le transfert dans la file</translation>
    </message>
    <message>
        <source>Shift+F10</source>
        <translation>Shift+F10</translation>
    </message>
    <message>
        <source>Menu of the row</source>
        <translation>Menu de la ligne</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1&#xa0;: %2</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Ctrl++, Ctrl+-, Ctrl+0</source>
        <translation>Ctrl++, Ctrl+-, Ctrl+0</translation>
    </message>
    <message>
        <source>Larger, smaller, usual text</source>
        <translation>Texte plus grand, plus petit, habituel</translation>
    </message>
</context>
<context>
    <name>SignInFace</name>
    <message>
        <source>Continue</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>Signing in</source>
        <translation>Connexion</translation>
    </message>
</context>
<context>
    <name>SiteChoice</name>
    <message>
        <source>Platform</source>
        <translation>Plateforme</translation>
    </message>
    <message>
        <source>Live</source>
        <translation>Live</translation>
    </message>
    <message>
        <source>QA</source>
        <translation>QA</translation>
    </message>
    <message>
        <source>One account works on both. Each keeps its own sign-in.</source>
        <translation>Un même compte fonctionne sur les deux. Chacune conserve sa propre connexion.</translation>
    </message>
</context>
<context>
    <name>Spinner</name>
    <message>
        <source>Busy</source>
        <translation>Occupé</translation>
    </message>
</context>
<context>
    <name>StatusBadge</name>
    <message>
        <source>A file is filed against this</source>
        <translation>Un fichier est déposé pour cet élément</translation>
    </message>
</context>
<context>
    <name>TransferRow</name>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Reprendre</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Suspendre</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
</context>
<context>
    <name>TransfersButton</name>
    <message>
        <source>Transfers</source>
        <translation>Transferts</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
</context>
<context>
    <name>TransfersFooter</name>
    <message>
        <source>Resume all</source>
        <translation>Tout reprendre</translation>
    </message>
    <message>
        <source>Pause all</source>
        <translation>Tout suspendre</translation>
    </message>
    <message>
        <source>Stop all</source>
        <translation>Tout arrêter</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Vider la liste</translation>
    </message>
</context>
<context>
    <name>TransfersView</name>
    <message>
        <source>Transfers</source>
        <translation>Transferts</translation>
    </message>
    <message>
        <source>In flight</source>
        <translation>En cours</translation>
    </message>
    <message>
        <source>Finished</source>
        <translation>Terminés</translation>
    </message>
    <message>
        <source>Interrupted</source>
        <translation>Interrompus</translation>
    </message>
    <message>
        <source>Nothing moving</source>
        <translation>Rien en cours</translation>
    </message>
    <message>
        <source>Nothing finished yet</source>
        <translation>Rien de terminé encore</translation>
    </message>
    <message>
        <source>Nothing interrupted</source>
        <translation>Rien d’interrompu</translation>
    </message>
    <message>
        <source>Keep going</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>Stop all</source>
        <translation>Tout arrêter</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Stop all transfers?</source>
        <translation>Arrêter tous les transferts&#xa0;?</translation>
    </message>
</context>
<context>
    <name>TransfersWindow</name>
    <message>
        <source>Transfers</source>
        <translation>Transferts</translation>
    </message>
</context>
<context>
    <name>Tray</name>
    <message>
        <source>Palvera</source>
        <translation>Palvera</translation>
    </message>
    <message>
        <source>Show Palvera</source>
        <translation>Afficher Palvera</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
</context>
<context>
    <name>UpdateAlert</name>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>UpdateDialogs</name>
    <message>
        <source>Not yet</source>
        <translation>Pas encore</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Redémarrer</translation>
    </message>
    <message>
        <source>Restart Palvera now?</source>
        <translation>Redémarrer Palvera maintenant&#xa0;?</translation>
    </message>
</context>
<context>
    <name>UpdatePill</name>
    <message>
        <source>%</source>
        <translation>&#xa0;%</translation>
    </message>
</context>
<context>
    <name>Updater</name>
    <message>
        <source>Palvera %1 did not start on this computer, so %2 runs instead.</source>
        <translation>Palvera %1 n’a pas démarré sur cet ordinateur&#xa0;; %2 fonctionne à sa place.</translation>
    </message>
</context>
<context>
    <name>palvera::Announcements</name>
    <message>
        <source>“%1” is done.</source>
        <translation>«&#xa0;%1&#xa0;» est terminé.</translation>
    </message>
    <message>
        <source>“%1” could not be transferred. %2</source>
        <translation>«&#xa0;%1&#xa0;» n’a pas pu être transféré. %2</translation>
    </message>
    <message>
        <source>“%1” is at a standstill. %2</source>
        <translation>«&#xa0;%1&#xa0;» est à l’arrêt. %2</translation>
    </message>
    <message>
        <source>“%1”: %2 percent.</source>
        <translation>«&#xa0;%1&#xa0;»&#xa0;: %2 pour cent.</translation>
    </message>
</context>
<context>
    <name>palvera::AssetsView</name>
    <message>
        <source>Uploads</source>
        <translation>Téléversements</translation>
    </message>
    <message>
        <source>Assets</source>
        <translation>Ressources</translation>
    </message>
    <message>
        <source>Projects</source>
        <translation>Projets</translation>
    </message>
    <message>
        <source>%1 loaded</source>
        <translation>%1 chargés</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
    <message>
        <source>The files did not arrive from the other program. Drop them again, or choose Upload.</source>
        <translation>Les fichiers ne sont pas arrivés de l’autre programme. Déposez-les de nouveau ou choisissez «&#xa0;Téléverser&#xa0;».</translation>
    </message>
    <message>
        <source>That is not a file on this computer. Save it here first, then drop it.</source>
        <translation>Ce n’est pas un fichier de cet ordinateur. Enregistrez-le d’abord ici, puis déposez-le.</translation>
    </message>
    <message>
        <source>What is not a file on this computer was left out. Save it here first.</source>
        <translation>Ce qui n’est pas un fichier de cet ordinateur a été laissé de côté. Enregistrez-le d’abord ici.</translation>
    </message>
    <message>
        <source>All types</source>
        <translation>Tous les types</translation>
    </message>
</context>
<context>
    <name>palvera::DeliverableView</name>
    <message>
        <source>The last upload failed: %1</source>
        <translation>Le dernier téléversement a échoué&#xa0;: %1</translation>
    </message>
    <message>
        <source>The upload of “%1” was cut off, and the file is not where it was. %2.</source>
        <translation>Le téléversement de «&#xa0;%1&#xa0;» a été interrompu et le fichier n’est plus à sa place. %2.</translation>
    </message>
    <message>
        <source>The upload of “%1” was cut off. %2.</source>
        <translation>Le téléversement de «&#xa0;%1&#xa0;» a été interrompu. %2.</translation>
    </message>
</context>
<context>
    <name>palvera::DeliverablesView</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
    <message>
        <source>Upload failed</source>
        <translation>Échec du téléversement</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>État</translation>
    </message>
    <message>
        <source>Platform</source>
        <translation>Plateforme</translation>
    </message>
    <message>
        <source>a file is filed</source>
        <translation>un fichier est déposé</translation>
    </message>
</context>
<context>
    <name>palvera::FileSender</name>
    <message>
        <source>The file did not arrive from the other program. Drop it again, or choose it here.</source>
        <translation>Le fichier n’est pas arrivé de l’autre programme. Déposez-le de nouveau ou choisissez-le ici.</translation>
    </message>
    <message>
        <source>That is not a file on this computer. Save it here first, then drop it.</source>
        <translation>Ce n’est pas un fichier de cet ordinateur. Enregistrez-le d’abord ici, puis déposez-le.</translation>
    </message>
    <message>
        <source>“%1” was not sent to “%2”. %3</source>
        <translation>«&#xa0;%1&#xa0;» n’a pas été envoyé à «&#xa0;%2&#xa0;». %3</translation>
    </message>
    <message>
        <source>It looks too long for that: it is %1.</source>
        <translation>Il semble trop long pour cela&#xa0;: il fait %1.</translation>
    </message>
    <message>
        <source>Only “%1” was taken.</source>
        <translation>Seul «&#xa0;%1&#xa0;» a été pris.</translation>
    </message>
    <message>
        <source>“%1” is on its way already. Stop it before you send another file.</source>
        <translation>«&#xa0;%1&#xa0;» est déjà en route. Arrêtez-le avant d’envoyer un autre fichier.</translation>
    </message>
    <message>
        <source>%1 is %2. Textless elements are usually a few minutes long. The picture master row is probably the right place.</source>
        <translation>%1 fait %2. Les «&#xa0;Textless elements&#xa0;» durent en général quelques minutes. La ligne du master image est probablement la bonne.</translation>
    </message>
    <message>
        <source>This file</source>
        <translation>Ce fichier</translation>
    </message>
</context>
<context>
    <name>palvera::InterruptedView</name>
    <message>
        <source>Discard this upload?</source>
        <translation>Abandonner ce téléversement&#xa0;?</translation>
    </message>
    <message>
        <source>Discard this download?</source>
        <translation>Abandonner ce téléchargement&#xa0;?</translation>
    </message>
    <message>
        <source>“%1” has not begun to go up. Your file stays as it is.</source>
        <translation>Le téléversement de «&#xa0;%1&#xa0;» n’a pas commencé. Votre fichier reste tel quel.</translation>
    </message>
    <message>
        <source>“%1”: %2. What storage has of it is thrown away; your file stays as it is.</source>
        <translation>«&#xa0;%1&#xa0;»&#xa0;: %2. Ce que le stockage en a est supprimé&#xa0;; votre fichier reste tel quel.</translation>
    </message>
    <message>
        <source>“%1” has not begun to come down.</source>
        <translation>Le téléchargement de «&#xa0;%1&#xa0;» n’a pas commencé.</translation>
    </message>
    <message>
        <source>“%1”: %2 downloaded. That is removed from “%3”.</source>
        <translation>«&#xa0;%1&#xa0;»&#xa0;: %2 téléchargés. Cela est supprimé de «&#xa0;%3&#xa0;».</translation>
    </message>
    <message>
        <source>That is not a file on this computer.</source>
        <translation>Ce n’est pas un fichier de cet ordinateur.</translation>
    </message>
    <message>
        <source>“%1” in “%2” has the size and the time of the file that was being sent. Only the rest of it is sent.</source>
        <translation>«&#xa0;%1&#xa0;» dans «&#xa0;%2&#xa0;» a la taille et la date du fichier qui était en cours d’envoi. Seul le reste est envoyé.</translation>
    </message>
    <message>
        <source>“%1” in “%2” is not as the file that was being sent: its size or the time of its last change is another one. It can be sent from the start; what had gone up is thrown away then.</source>
        <translation>«&#xa0;%1&#xa0;» dans «&#xa0;%2&#xa0;» n’est pas comme le fichier qui était en cours d’envoi&#xa0;: sa taille ou la date de sa dernière modification diffère. Il peut être envoyé depuis le début&#xa0;; ce qui avait été téléversé est alors supprimé.</translation>
    </message>
    <message>
        <source>That file has changed meanwhile.</source>
        <translation>Ce fichier a changé entre-temps.</translation>
    </message>
</context>
<context>
    <name>palvera::LoginView</name>
    <message>
        <source>Waiting for Palvera to answer…</source>
        <translation>En attente d’une réponse de Palvera…</translation>
    </message>
    <message>
        <source>This computer is not connected to a network.</source>
        <translation>Cet ordinateur n’est connecté à aucun réseau.</translation>
    </message>
    <message>
        <source>That sign-in was cancelled. Start it again to use it.</source>
        <translation>Cette connexion a été annulée. Relancez-la pour l’utiliser.</translation>
    </message>
    <message>
        <source>That sign-in was not started here, so it was not used.</source>
        <translation>Cette connexion n’a pas été lancée ici&#xa0;; elle n’a donc pas été utilisée.</translation>
    </message>
    <message>
        <source>Palvera can be reached again. Begin with your work email.</source>
        <translation>Palvera est de nouveau joignable. Commencez par votre e-mail professionnel.</translation>
    </message>
    <message>
        <source>Cannot reach Palvera. Check your connection and try again.</source>
        <translation>Palvera est injoignable. Vérifiez votre connexion et réessayez.</translation>
    </message>
    <message>
        <source>Could not send that. Check your connection.</source>
        <translation>L’envoi a échoué. Vérifiez votre connexion.</translation>
    </message>
    <message>
        <source>That passkey did not work. Sign in another way.</source>
        <translation>Cette clé d’accès n’a pas fonctionné. Connectez-vous autrement.</translation>
    </message>
</context>
<context>
    <name>palvera::ProjectsView</name>
    <message>
        <source>Platform</source>
        <translation>Plateforme</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
</context>
<context>
    <name>palvera::RootView</name>
    <message>
        <source>Palvera</source>
        <translation>Palvera</translation>
    </message>
    <message>
        <source>Build %1</source>
        <translation>Build %1</translation>
    </message>
    <message>
        <source>One file is moving. It waits under Interrupted and goes on from where it was once you are signed in again.</source>
        <translation>Un fichier est en cours de transfert. Il attend sous «&#xa0;Interrompus&#xa0;» et reprend là où il en était dès que vous êtes reconnecté.</translation>
    </message>
    <message>
        <source>The deliverable cannot be shown. %1</source>
        <translation>Le livrable ne peut pas être affiché. %1</translation>
    </message>
    <message>
        <source>The platform no longer has that deliverable.</source>
        <translation>La plateforme n’a plus ce livrable.</translation>
    </message>
    <message>
        <source>Your sign-in has expired. Sign in again.</source>
        <translation>Votre connexion a expiré. Reconnectez-vous.</translation>
    </message>
    <message numerus="yes">
        <source>%n files are moving. They wait under Interrupted and go on from where they were once you are signed in again.</source>
        <translation>
            <numerusform>%n fichier est en cours de transfert. Il attend sous «&#xa0;Interrompus&#xa0;» et reprend là où il en était dès que vous êtes reconnecté.</numerusform>
            <numerusform>%n fichiers sont en cours de transfert. Ils attendent sous «&#xa0;Interrompus&#xa0;» et reprennent là où ils en étaient dès que vous êtes reconnecté.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>palvera::RowDrop</name>
    <message>
        <source>Send “%1” to %2?</source>
        <translation>Envoyer «&#xa0;%1&#xa0;» à «&#xa0;%2&#xa0;»&#xa0;?</translation>
    </message>
    <message>
        <source>It replaces “%1”.</source>
        <translation>Il remplace «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>One file goes to it. Left out: %1.</source>
        <translation>Un seul fichier y va. Laissés de côté&#xa0;: %1.</translation>
    </message>
</context>
<context>
    <name>palvera::Session</name>
    <message>
        <source>Signed in, but only for now: %1</source>
        <translation>Connecté, mais seulement pour l’instant&#xa0;: %1</translation>
    </message>
    <message>
        <source>You are signed in as %1.</source>
        <translation>Vous êtes connecté en tant que %1.</translation>
    </message>
    <message>
        <source>Signed out on this computer. The platform could not be told.</source>
        <translation>Déconnecté sur cet ordinateur. La plateforme n’a pas pu être prévenue.</translation>
    </message>
</context>
<context>
    <name>palvera::TransfersView</name>
    <message>
        <source>%1 cut off</source>
        <translation>%1 interrompus</translation>
    </message>
    <message>
        <source>Going to %1

%2</source>
        <translation>Destination&#xa0;: %1

%2</translation>
    </message>
    <message>
        <source>In flight</source>
        <translation>En cours</translation>
    </message>
    <message>
        <source>Finished</source>
        <translation>Terminés</translation>
    </message>
    <message>
        <source>Interrupted</source>
        <translation>Interrompus</translation>
    </message>
    <message>
        <source>What has gone up is thrown away, so nothing half delivered is left in storage. What has come down is kept on disk.</source>
        <translation>Ce qui a été téléversé est supprimé, pour que rien d’à moitié livré ne reste dans le stockage. Ce qui a été téléchargé est conservé sur le disque.</translation>
    </message>
</context>
<context>
    <name>palvera::Updater</name>
    <message>
        <source>Updates of this copy come with those of the system.</source>
        <translation>Les mises à jour de cette copie viennent avec celles du système.</translation>
    </message>
    <message>
        <source>You have %1.</source>
        <translation>Vous avez %1.</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <translation>Recherche de mises à jour…</translation>
    </message>
    <message>
        <source>The download failed.</source>
        <translation>Le téléchargement a échoué.</translation>
    </message>
    <message>
        <source>The installer is missing from this copy of the app.</source>
        <translation>Le programme d’installation manque dans cette copie de l’application.</translation>
    </message>
    <message>
        <source>The installer did not answer: %1</source>
        <translation>Le programme d’installation n’a pas répondu&#xa0;: %1</translation>
    </message>
</context>
</TS>
