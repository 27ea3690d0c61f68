<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>AboutSheet</name>
    <message>
        <source>About Palvera</source>
        <translation>Über Palvera</translation>
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
        <translation>Letzte Suche nach Updates</translation>
    </message>
    <message>
        <source>Last failure</source>
        <translation>Letzter Fehler</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Updates suchen&#xa0;…</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Licences</source>
        <translation>Lizenzen</translation>
    </message>
    <message>
        <source>Palvera works with Qt (LGPL 3), Boost (Boost Software License), libcurl (curl licence), OpenSSL (Apache 2.0), libfido2 and libarchive (BSD), the symbols of Phosphor (MIT) and the typeface Inter (Open Font License).</source>
        <translation>Palvera verwendet Qt (LGPL 3), Boost (Boost Software License), libcurl (curl-Lizenz), OpenSSL (Apache 2.0), libfido2 und libarchive (BSD), die Symbole von Phosphor (MIT) und die Schrift Inter (Open Font License).</translation>
    </message>
    <message>
        <source>Show their texts</source>
        <translation>Lizenztexte anzeigen</translation>
    </message>
</context>
<context>
    <name>AccountMenu</name>
    <message>
        <source>Account</source>
        <translation>Konto</translation>
    </message>
</context>
<context>
    <name>AccountRows</name>
    <message>
        <source>Sign out</source>
        <translation>Abmelden</translation>
    </message>
</context>
<context>
    <name>AssetTableRow</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Deal</source>
        <translation>Deal</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Erneut versuchen</translation>
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
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Copy name</source>
        <translation>Namen kopieren</translation>
    </message>
    <message>
        <source>Select all</source>
        <translation>Alle auswählen</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
</context>
<context>
    <name>AssetsTable</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Deal</source>
        <translation>Deal</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Loading</source>
        <translation>Wird geladen</translation>
    </message>
    <message>
        <source>Load more</source>
        <translation>Mehr laden</translation>
    </message>
</context>
<context>
    <name>AssetsView</name>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Which kind of file to show</source>
        <translation>Welche Art von Dateien angezeigt wird</translation>
    </message>
    <message>
        <source>Upload</source>
        <translation>Hochladen</translation>
    </message>
    <message>
        <source>Add master files to Uploads</source>
        <translation>Master-Dateien zu „Uploads“ hinzufügen</translation>
    </message>
    <message>
        <source>Download what is selected</source>
        <translation>Auswahl herunterladen</translation>
    </message>
    <message>
        <source>Download what is selected
to %1</source>
        <translation>Auswahl herunterladen
nach %1</translation>
    </message>
    <message>
        <source>Where downloads go</source>
        <translation>Ziel für Downloads</translation>
    </message>
    <message>
        <source>Choose another folder…</source>
        <translation>Anderen Ordner wählen&#xa0;…</translation>
    </message>
    <message>
        <source>Find in Uploads</source>
        <translation>In „Uploads“ suchen</translation>
    </message>
    <message>
        <source>Find an asset</source>
        <translation>Asset suchen</translation>
    </message>
    <message>
        <source>Loading</source>
        <translation>Wird geladen</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Could not load Assets</source>
        <translation>„Assets“ konnte nicht geladen werden</translation>
    </message>
    <message>
        <source>Show all</source>
        <translation>Alle anzeigen</translation>
    </message>
</context>
<context>
    <name>BackLink</name>
    <message>
        <source>Back to sign in</source>
        <translation>Zurück zur Anmeldung</translation>
    </message>
</context>
<context>
    <name>BrowserFace</name>
    <message>
        <source>Finished there? Choose Open Palvera in the browser, or open it again.</source>
        <translation>Dort fertig? Wählen Sie im Browser, dass Palvera geöffnet wird, oder öffnen Sie ihn erneut.</translation>
    </message>
    <message>
        <source>Your browser is open at the sign-in page. When it asks, choose Open Palvera.</source>
        <translation>Die Anmeldeseite ist in Ihrem Browser geöffnet. Wenn er fragt, wählen Sie, dass Palvera geöffnet wird.</translation>
    </message>
    <message>
        <source>Finish in your browser</source>
        <translation>Im Browser abschließen</translation>
    </message>
    <message>
        <source>Open the browser again</source>
        <translation>Browser erneut öffnen</translation>
    </message>
    <message>
        <source>Copy the address</source>
        <translation>Adresse kopieren</translation>
    </message>
    <message>
        <source>The address is copied</source>
        <translation>Adresse kopiert</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>CodeFace</name>
    <message>
        <source>Checking</source>
        <translation>Wird geprüft</translation>
    </message>
    <message>
        <source>We sent a six-digit code to %1. Enter it here to confirm the address is yours.</source>
        <translation>Wir haben einen sechsstelligen Code an %1 gesendet. Geben Sie ihn hier ein, um Ihre Adresse zu bestätigen.</translation>
    </message>
    <message>
        <source>Enter the code from your authenticator app.</source>
        <translation>Geben Sie den Code aus Ihrer Authenticator-App ein.</translation>
    </message>
    <message>
        <source>Check your email</source>
        <translation>Sehen Sie in Ihr Postfach</translation>
    </message>
    <message>
        <source>One more step</source>
        <translation>Noch ein Schritt</translation>
    </message>
    <message>
        <source>Another code is on its way.</source>
        <translation>Ein neuer Code ist unterwegs.</translation>
    </message>
    <message>
        <source>Nothing arrived?</source>
        <translation>Nichts angekommen?</translation>
    </message>
    <message>
        <source>Send another code</source>
        <translation>Neuen Code senden</translation>
    </message>
    <message>
        <source>Code from the email</source>
        <translation>Code aus der E-Mail</translation>
    </message>
    <message>
        <source>Code from the app</source>
        <translation>Code aus der App</translation>
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
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>CopyableText</name>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
</context>
<context>
    <name>CutOffCard</name>
    <message>
        <source>Locate…</source>
        <translation>Suchen&#xa0;…</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
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
        <translation>Deliverables</translation>
    </message>
    <message>
        <source>Large files go up on several connections at once, and pick up where they left off if the network drops.</source>
        <translation>Große Dateien werden über mehrere Verbindungen zugleich hochgeladen und nach einem Netzausfall an derselben Stelle fortgesetzt.</translation>
    </message>
    <message>
        <source>Drop a file here</source>
        <translation>Datei hier ablegen</translation>
    </message>
    <message>
        <source>Keep going</source>
        <translation>Weitermachen</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stoppen</translation>
    </message>
</context>
<context>
    <name>DeliverablesView</name>
    <message>
        <source>Projects</source>
        <translation>Projekte</translation>
    </message>
    <message>
        <source>Find a deliverable</source>
        <translation>Deliverable suchen</translation>
    </message>
    <message>
        <source>Clear the filters</source>
        <translation>Filter zurücksetzen</translation>
    </message>
    <message>
        <source>Clear the search</source>
        <translation>Suche leeren</translation>
    </message>
    <message>
        <source>Clear a filter to see more.</source>
        <translation>Setzen Sie einen Filter zurück, um mehr zu sehen.</translation>
    </message>
    <message>
        <source>Nothing matches</source>
        <translation>Keine Treffer</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Could not load the deliverables</source>
        <translation>Die Deliverables konnten nicht geladen werden</translation>
    </message>
</context>
<context>
    <name>DropZone</name>
    <message>
        <source>Choose a file</source>
        <translation>Datei auswählen</translation>
    </message>
</context>
<context>
    <name>EmailFace</name>
    <message>
        <source>or</source>
        <translation>oder</translation>
    </message>
    <message>
        <source>Continue with %1, in a sign-in window.</source>
        <translation>Mit %1 fortfahren, in einem Anmeldefenster.</translation>
    </message>
    <message>
        <source>Sign in with a passkey</source>
        <translation>Mit einem Passkey anmelden</translation>
    </message>
    <message>
        <source>With your security key.</source>
        <translation>Mit Ihrem Sicherheitsschlüssel.</translation>
    </message>
    <message>
        <source>Opens the sign-in window; use your passkey there.</source>
        <translation>Im Anmeldefenster, mit Ihrem Passkey.</translation>
    </message>
</context>
<context>
    <name>EmailField</name>
    <message>
        <source>Work email</source>
        <translation>Geschäftliche E-Mail-Adresse</translation>
    </message>
    <message>
        <source>you@studio.example</source>
        <translation>sie@studio.example</translation>
    </message>
</context>
<context>
    <name>EnrolFace</name>
    <message>
        <source>Every sign-in asks for a code from an authenticator app. Scan this with Google Authenticator, 1Password or any app that makes them, then enter the code it shows.</source>
        <translation>Jede Anmeldung fragt nach einem Code aus einer Authenticator-App. Scannen Sie dies mit Google Authenticator, 1Password oder einer anderen App, die solche Codes erzeugt, und geben Sie dann den angezeigten Code ein.</translation>
    </message>
    <message>
        <source>Add an authenticator</source>
        <translation>Authenticator hinzufügen</translation>
    </message>
    <message>
        <source>QR code for your authenticator app</source>
        <translation>QR-Code für Ihre Authenticator-App</translation>
    </message>
    <message>
        <source>Cannot scan it? Enter this key instead</source>
        <translation>Kein Scan möglich? Schlüssel eingeben</translation>
    </message>
    <message>
        <source>Enter this key in your authenticator app</source>
        <translation>Schlüssel für Ihre Authenticator-App</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Schlüssel</translation>
    </message>
    <message>
        <source>Code from the app</source>
        <translation>Code aus der App</translation>
    </message>
</context>
<context>
    <name>FailureCard</name>
    <message>
        <source>Locate…</source>
        <translation>Suchen&#xa0;…</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
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
        <translation>Datei zum Senden auswählen</translation>
    </message>
    <message>
        <source>Choose where downloads go</source>
        <translation>Ziel für Downloads wählen</translation>
    </message>
</context>
<context>
    <name>FiledCard</name>
    <message>
        <source>Filed against this deliverable</source>
        <translation>Für dieses Deliverable abgelegt</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Herunterladen</translation>
    </message>
    <message>
        <source>Drop a file to replace this</source>
        <translation>Datei ablegen, um diese zu ersetzen</translation>
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
        <translation>Dateien für „Uploads“ auswählen</translation>
    </message>
    <message>
        <source>Choose where downloads go</source>
        <translation>Ziel für Downloads wählen</translation>
    </message>
</context>
<context>
    <name>FilterBar</name>
    <message>
        <source>Family</source>
        <translation>Familie</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>Sortierung</translation>
    </message>
    <message>
        <source>Clear the filters</source>
        <translation>Filter aufheben</translation>
    </message>
</context>
<context>
    <name>ForgotFace</name>
    <message>
        <source>Send me a link</source>
        <translation>Link senden</translation>
    </message>
    <message>
        <source>Sending</source>
        <translation>Wird gesendet</translation>
    </message>
    <message>
        <source>If %1 has an account, a link is on its way. It works once and expires in an hour.</source>
        <translation>Wenn es zu %1 ein Konto gibt, ist ein Link unterwegs. Er funktioniert einmal und läuft in einer Stunde ab.</translation>
    </message>
    <message>
        <source>Give us the email address on your account and we will send a link to set a new one.</source>
        <translation>Nennen Sie uns die E-Mail-Adresse Ihres Kontos, und wir senden Ihnen einen Link, mit dem Sie ein neues festlegen.</translation>
    </message>
    <message>
        <source>Forgotten your password?</source>
        <translation>Passwort vergessen?</translation>
    </message>
    <message>
        <source>Nothing has changed yet. Following the link sets a new password and signs you out everywhere else.</source>
        <translation>Noch ist nichts geändert. Über den Link legen Sie ein neues Passwort fest und werden überall sonst abgemeldet.</translation>
    </message>
</context>
<context>
    <name>GoneCard</name>
    <message>
        <source>The platform no longer has this deliverable</source>
        <translation>Dieses Deliverable gibt es auf der Plattform nicht mehr</translation>
    </message>
    <message>
        <source>Nothing can be sent to it. If it comes back, it takes files again.</source>
        <translation>Es kann nichts dorthin gesendet werden. Kehrt es zurück, nimmt es wieder Dateien an.</translation>
    </message>
</context>
<context>
    <name>HelpSheet</name>
    <message>
        <source>Sending a master</source>
        <translation>Einen Master senden</translation>
    </message>
    <message>
        <source>Open the client, the project and the deliverable, and drop the file there, or choose it with the button. A file may also be dropped on a row of the list. It goes up over several connections, is checked by the platform, and is filed: only then is it called done.</source>
        <translation>Öffnen Sie den Kunden, das Projekt und das Deliverable und legen Sie die Datei dort ab oder wählen Sie sie mit der Schaltfläche aus. Eine Datei kann auch auf einer Zeile der Liste abgelegt werden. Sie wird über mehrere Verbindungen hochgeladen, von der Plattform geprüft und abgelegt: Erst dann gilt sie als fertig.</translation>
    </message>
    <message>
        <source>When something comes between</source>
        <translation>Wenn etwas dazwischenkommt</translation>
    </message>
    <message>
        <source>A lost network, a restart of the platform or sleep are waited out, and the upload goes on by itself. If the program ends first, the upload waits under Interrupted in the transfers, and goes on from the part that it had reached. The file must not change meanwhile; if it was moved, use Locate.</source>
        <translation>Ein Netzausfall, ein Neustart der Plattform oder der Ruhezustand werden abgewartet, und der Upload geht von selbst weiter. Endet das Programm vorher, wartet der Upload bei den Übertragungen unter „Unterbrochen“ und wird ab dem erreichten Teil fortgesetzt. Die Datei darf sich inzwischen nicht ändern; wurde sie verschoben, wählen Sie „Suchen“.</translation>
    </message>
    <message>
        <source>The transfers</source>
        <translation>Die Übertragungen</translation>
    </message>
    <message>
        <source>Downloads</source>
        <translation>Downloads</translation>
    </message>
    <message>
        <source>A file comes down into the downloads folder, which the first download asks for. A file that is there is never replaced: the new one gets a number. A download that was cut off waits under Interrupted, too.</source>
        <translation>Eine Datei wird in den Download-Ordner geladen, nach dem der erste Download fragt. Eine vorhandene Datei wird nie ersetzt: Die neue bekommt eine Nummer. Auch ein unterbrochener Download wartet unter „Unterbrochen“.</translation>
    </message>
    <message>
        <source>Sharing the line</source>
        <translation>Die Leitung teilen</translation>
    </message>
    <message>
        <source>Under Settings the transfers can be kept to so many MB/s, all day long or between certain hours. It holds at once, for what is moving, too.</source>
        <translation>Unter „Einstellungen“ lassen sich die Übertragungen auf eine Anzahl MB/s begrenzen, ganztägig oder zu bestimmten Zeiten. Das gilt sofort, auch für Laufendes.</translation>
    </message>
    <message>
        <source>Signing in</source>
        <translation>Anmelden</translation>
    </message>
    <message>
        <source>With an e-mail address and a password, in the browser, or with a passkey of a security key. When a sign-in expires, transfers wait until you have signed in again.</source>
        <translation>Mit E-Mail-Adresse und Passwort, im Browser oder mit einem Passkey auf einem Sicherheitsschlüssel. Läuft eine Anmeldung ab, warten die Übertragungen, bis Sie sich wieder angemeldet haben.</translation>
    </message>
    <message>
        <source>When you need help</source>
        <translation>Wenn Sie Hilfe brauchen</translation>
    </message>
    <message>
        <source>The log of the transfers says what was sent when, and how fast. Errors can be copied from the menu of a row: the platform&apos;s support will ask for them.</source>
        <translation>Das Protokoll der Übertragungen sagt, was wann und wie schnell gesendet wurde. Fehler lassen sich über das Menü einer Zeile kopieren: Der Support der Plattform wird danach fragen.</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>The panel shows what moves, what is over and what was cut off. As many run at once as the settings say, in the order of the list; drag a row or use Ctrl and the arrows to change it. What is paused keeps its place and what has arrived. What is stopped is given up.</source>
        <translation>Das Fenster zeigt, was läuft, was beendet ist und was unterbrochen wurde. So viele laufen zugleich, wie die Einstellungen sagen, in der Reihenfolge der Liste; ziehen Sie eine Zeile oder verwenden Sie Ctrl und die Pfeiltasten, um sie zu ändern. Was angehalten ist, behält seinen Platz und was schon angekommen ist. Was gestoppt wird, ist aufgegeben.</translation>
    </message>
</context>
<context>
    <name>InFlightCard</name>
    <message>
        <source>Resume</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stoppen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Transferred</source>
        <translation>Übertragen</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>Tempo</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Restzeit</translation>
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
        <translation>Das Update ist nicht von Palvera signiert.</translation>
    </message>
    <message>
        <source>The update is damaged.</source>
        <translation>Das Update ist beschädigt.</translation>
    </message>
    <message>
        <source>The update is incomplete.</source>
        <translation>Das Update ist unvollständig.</translation>
    </message>
    <message>
        <source>The update is older than the copy on this computer.</source>
        <translation>Das Update ist älter als die Kopie auf diesem Computer.</translation>
    </message>
    <message>
        <source>The update is not the one that was announced.</source>
        <translation>Das Update ist nicht das angekündigte.</translation>
    </message>
    <message>
        <source>The update is for another kind of computer.</source>
        <translation>Das Update ist für eine andere Art von Computer.</translation>
    </message>
    <message>
        <source>The update holds something that does not belong there.</source>
        <translation>Das Update enthält etwas, das nicht hineingehört.</translation>
    </message>
    <message>
        <source>The update does not run on this computer.</source>
        <translation>Das Update läuft auf diesem Computer nicht.</translation>
    </message>
    <message>
        <source>Another update is under way on this computer. Try again in a minute.</source>
        <translation>Auf diesem Computer läuft bereits ein anderes Update. Versuchen Sie es in einer Minute erneut.</translation>
    </message>
    <message>
        <source>The update could not be read in time.</source>
        <translation>Das Update konnte nicht rechtzeitig gelesen werden.</translation>
    </message>
    <message>
        <source>The update could not be unpacked.</source>
        <translation>Das Update konnte nicht entpackt werden.</translation>
    </message>
    <message>
        <source>You may not install updates on this computer. Ask whoever looks after it.</source>
        <translation>Sie dürfen auf diesem Computer keine Updates installieren. Fragen Sie, wer ihn betreut.</translation>
    </message>
    <message>
        <source>Nobody could be asked whether updates may be installed on this computer.</source>
        <translation>Niemand konnte gefragt werden, ob auf diesem Computer Updates installiert werden dürfen.</translation>
    </message>
    <message>
        <source>This copy of Palvera is not looked after by the installer.</source>
        <translation>Diese Kopie von Palvera wird nicht vom Installationsprogramm betreut.</translation>
    </message>
    <message>
        <source>The installer is missing from this copy of the app.</source>
        <translation>In dieser Kopie der App fehlt das Installationsprogramm.</translation>
    </message>
    <message>
        <source>There is no prepared update.</source>
        <translation>Es ist kein Update vorbereitet.</translation>
    </message>
</context>
<context>
    <name>InterruptedDialogs</name>
    <message>
        <source>Keep</source>
        <translation>Behalten</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>Fortfahren</translation>
    </message>
    <message>
        <source>Is this the same file?</source>
        <translation>Ist das dieselbe Datei?</translation>
    </message>
    <message>
        <source>Send it from the start</source>
        <translation>Von vorn senden</translation>
    </message>
    <message>
        <source>That is another file</source>
        <translation>Das ist eine andere Datei</translation>
    </message>
    <message>
        <source>That did not work</source>
        <translation>Das hat nicht geklappt</translation>
    </message>
</context>
<context>
    <name>InterruptedLine</name>
    <message>
        <source>Resume all</source>
        <translation>Alle fortsetzen</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Anzeigen</translation>
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
        <translation>Suchen&#xa0;…</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
</context>
<context>
    <name>Language</name>
    <message>
        <source>Arabic</source>
        <translation>Arabisch</translation>
    </message>
    <message>
        <source>Basque</source>
        <translation>Baskisch</translation>
    </message>
    <message>
        <source>Bengali</source>
        <translation>Bengalisch</translation>
    </message>
    <message>
        <source>Bulgarian</source>
        <translation>Bulgarisch</translation>
    </message>
    <message>
        <source>Cantonese</source>
        <translation>Kantonesisch</translation>
    </message>
    <message>
        <source>Catalan</source>
        <translation>Katalanisch</translation>
    </message>
    <message>
        <source>Chinese</source>
        <translation>Chinesisch</translation>
    </message>
    <message>
        <source>Croatian</source>
        <translation>Kroatisch</translation>
    </message>
    <message>
        <source>Czech</source>
        <translation>Tschechisch</translation>
    </message>
    <message>
        <source>Danish</source>
        <translation>Dänisch</translation>
    </message>
    <message>
        <source>Dutch</source>
        <translation>Niederländisch</translation>
    </message>
    <message>
        <source>English</source>
        <translation>Englisch</translation>
    </message>
    <message>
        <source>Estonian</source>
        <translation>Estnisch</translation>
    </message>
    <message>
        <source>Filipino</source>
        <translation>Filipino</translation>
    </message>
    <message>
        <source>Finnish</source>
        <translation>Finnisch</translation>
    </message>
    <message>
        <source>French</source>
        <translation>Französisch</translation>
    </message>
    <message>
        <source>Galician</source>
        <translation>Galicisch</translation>
    </message>
    <message>
        <source>German</source>
        <translation>Deutsch</translation>
    </message>
    <message>
        <source>Greek</source>
        <translation>Griechisch</translation>
    </message>
    <message>
        <source>Hebrew</source>
        <translation>Hebräisch</translation>
    </message>
    <message>
        <source>Hindi</source>
        <translation>Hindi</translation>
    </message>
    <message>
        <source>Hungarian</source>
        <translation>Ungarisch</translation>
    </message>
    <message>
        <source>Icelandic</source>
        <translation>Isländisch</translation>
    </message>
    <message>
        <source>Indonesian</source>
        <translation>Indonesisch</translation>
    </message>
    <message>
        <source>Irish</source>
        <translation>Irisch</translation>
    </message>
    <message>
        <source>Italian</source>
        <translation>Italienisch</translation>
    </message>
    <message>
        <source>Japanese</source>
        <translation>Japanisch</translation>
    </message>
    <message>
        <source>Korean</source>
        <translation>Koreanisch</translation>
    </message>
    <message>
        <source>Latvian</source>
        <translation>Lettisch</translation>
    </message>
    <message>
        <source>Lithuanian</source>
        <translation>Litauisch</translation>
    </message>
    <message>
        <source>Malay</source>
        <translation>Malaiisch</translation>
    </message>
    <message>
        <source>Norwegian Bokmal</source>
        <translation>Norwegisch (Bokmål)</translation>
    </message>
    <message>
        <source>Persian</source>
        <translation>Persisch</translation>
    </message>
    <message>
        <source>Polish</source>
        <translation>Polnisch</translation>
    </message>
    <message>
        <source>Portuguese</source>
        <translation>Portugiesisch</translation>
    </message>
    <message>
        <source>Romanian</source>
        <translation>Rumänisch</translation>
    </message>
    <message>
        <source>Russian</source>
        <translation>Russisch</translation>
    </message>
    <message>
        <source>Serbian</source>
        <translation>Serbisch</translation>
    </message>
    <message>
        <source>Slovak</source>
        <translation>Slowakisch</translation>
    </message>
    <message>
        <source>Slovenian</source>
        <translation>Slowenisch</translation>
    </message>
    <message>
        <source>Spanish</source>
        <translation>Spanisch</translation>
    </message>
    <message>
        <source>Swedish</source>
        <translation>Schwedisch</translation>
    </message>
    <message>
        <source>Tamil</source>
        <translation>Tamil</translation>
    </message>
    <message>
        <source>Telugu</source>
        <translation>Telugu</translation>
    </message>
    <message>
        <source>Thai</source>
        <translation>Thailändisch</translation>
    </message>
    <message>
        <source>Turkish</source>
        <translation>Türkisch</translation>
    </message>
    <message>
        <source>Ukrainian</source>
        <translation>Ukrainisch</translation>
    </message>
    <message>
        <source>Urdu</source>
        <translation>Urdu</translation>
    </message>
    <message>
        <source>Vietnamese</source>
        <translation>Vietnamesisch</translation>
    </message>
    <message>
        <source>Welsh</source>
        <translation>Walisisch</translation>
    </message>
</context>
<context>
    <name>ListRow</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
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
        <translation>Warten auf eine Antwort von Palvera&#xa0;…</translation>
    </message>
</context>
<context>
    <name>LocatePanel</name>
    <message>
        <source>Where is the file?</source>
        <translation>Wo ist die Datei?</translation>
    </message>
</context>
<context>
    <name>LoginView</name>
    <message>
        <source>Back to sign in</source>
        <translation>Zurück zur Anmeldung</translation>
    </message>
    <message>
        <source>Sign in with an access code</source>
        <translation>Mit einem Zugangscode anmelden</translation>
    </message>
    <message>
        <source>About Palvera</source>
        <translation>Über Palvera</translation>
    </message>
    <message>
        <source>Secured by WorkOS</source>
        <translation>Gesichert durch WorkOS</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Keep going</source>
        <translation>Weitermachen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>They wait under Interrupted and go on from where they were.</source>
        <translation>Sie warten unter „Unterbrochen“ und werden an derselben Stelle fortgesetzt.</translation>
    </message>
    <message>
        <source>Quit while files are moving?</source>
        <translation>Beenden, während Dateien übertragen werden?</translation>
    </message>
</context>
<context>
    <name>MenuButton</name>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
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
        <translation>Ausblenden</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>OrgPickerView</name>
    <message>
        <source>Choose a client</source>
        <translation>Kunden auswählen</translation>
    </message>
    <message>
        <source>Loading your clients…</source>
        <translation>Ihre Kunden werden geladen&#xa0;…</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Nobody has shared work with you yet.</source>
        <translation>Noch hat niemand Arbeiten mit Ihnen geteilt.</translation>
    </message>
    <message>
        <source>Could not load your clients</source>
        <translation>Ihre Kunden konnten nicht geladen werden</translation>
    </message>
    <message>
        <source>No clients</source>
        <translation>Keine Kunden</translation>
    </message>
</context>
<context>
    <name>PasskeyFace</name>
    <message>
        <source>Sign in with a passkey</source>
        <translation>Mit einem Passkey anmelden</translation>
    </message>
    <message>
        <source>PIN</source>
        <translation>PIN</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Use the browser instead</source>
        <translation>Stattdessen den Browser verwenden</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>PasswordFace</name>
    <message>
        <source>Forgotten your password?</source>
        <translation>Passwort vergessen?</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Ändern</translation>
    </message>
</context>
<context>
    <name>PasswordField</name>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
</context>
<context>
    <name>Picker</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
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
        <translation>Einstellungen&#xa0;…</translation>
    </message>
    <message>
        <source>Ctrl+?</source>
        <translation>Ctrl+?</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Open log</source>
        <translation>Protokoll öffnen</translation>
    </message>
    <message>
        <source>F1</source>
        <translation>F1</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>About Palvera</source>
        <translation>Über Palvera</translation>
    </message>
    <message>
        <source>Ctrl+U</source>
        <translation>Ctrl+U</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Updates suchen&#xa0;…</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
</context>
<context>
    <name>ProgressLine</name>
    <message>
        <source>%1, %2 percent</source>
        <translation>%1, %2 Prozent</translation>
    </message>
</context>
<context>
    <name>ProjectsPage</name>
    <message>
        <source>Choose another client</source>
        <translation>Anderen Kunden wählen</translation>
    </message>
</context>
<context>
    <name>ProjectsView</name>
    <message>
        <source>Clients</source>
        <translation>Kunden</translation>
    </message>
    <message>
        <source>Projects</source>
        <translation>Projekte</translation>
    </message>
    <message>
        <source>Find a project</source>
        <translation>Projekt suchen</translation>
    </message>
    <message>
        <source>Loading the projects</source>
        <translation>Projekte werden geladen</translation>
    </message>
    <message>
        <source>Nothing has been shared with you in this client yet.</source>
        <translation>Bei diesem Kunden wurde noch nichts mit Ihnen geteilt.</translation>
    </message>
    <message>
        <source>No projects</source>
        <translation>Keine Projekte</translation>
    </message>
    <message>
        <source>Clear the search</source>
        <translation>Suche leeren</translation>
    </message>
    <message>
        <source>Nothing matches</source>
        <translation>Keine Treffer</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Could not load your projects</source>
        <translation>Ihre Projekte konnten nicht geladen werden</translation>
    </message>
    <message>
        <source>Assets</source>
        <translation>Assets</translation>
    </message>
    <message>
        <source>Master assets, for any project</source>
        <translation>Master-Assets, für jedes Projekt</translation>
    </message>
    <message>
        <source>Projects of %1</source>
        <translation>Projekte von %1</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>Sortierung</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Put in your security key.</source>
        <translation>Stecken Sie Ihren Sicherheitsschlüssel ein.</translation>
    </message>
    <message>
        <source>Touch the security key that you want to use.</source>
        <translation>Berühren Sie den Sicherheitsschlüssel, den Sie verwenden möchten.</translation>
    </message>
    <message>
        <source>Enter your security key&apos;s PIN.</source>
        <translation>Geben Sie die PIN Ihres Sicherheitsschlüssels ein.</translation>
    </message>
    <message>
        <source>Touch your security key.</source>
        <translation>Berühren Sie Ihren Sicherheitsschlüssel.</translation>
    </message>
    <message>
        <source>Which account?</source>
        <translation>Welches Konto?</translation>
    </message>
    <message>
        <source>One try left. After that the security key locks.</source>
        <translation>Noch ein Versuch. Danach sperrt sich der Sicherheitsschlüssel.</translation>
    </message>
    <message>
        <source>That PIN is not right.</source>
        <translation>Diese PIN stimmt nicht.</translation>
    </message>
    <message>
        <source>Account %1</source>
        <translation>Konto %1</translation>
    </message>
    <message>
        <source>Transfers finished</source>
        <translation>Übertragungen beendet</translation>
    </message>
    <message>
        <source>“%1” is done.</source>
        <translation>„%1“ ist fertig.</translation>
    </message>
    <message numerus="yes">
        <source>%n files are done.</source>
        <translation>
            <numerusform>%n Datei ist fertig.</numerusform>
            <numerusform>%n Dateien sind fertig.</numerusform>
        </translation>
    </message>
    <message>
        <source>Transfers failed</source>
        <translation>Übertragungen fehlgeschlagen</translation>
    </message>
    <message>
        <source>“%1” could not be transferred.</source>
        <translation>„%1“ konnte nicht übertragen werden.</translation>
    </message>
    <message numerus="yes">
        <source>%n files could not be transferred.</source>
        <translation>
            <numerusform>%n Datei konnte nicht übertragen werden.</numerusform>
            <numerusform>%n Dateien konnten nicht übertragen werden.</numerusform>
        </translation>
    </message>
    <message>
        <source>Transfers finished, some failed</source>
        <translation>Übertragungen beendet, einige fehlgeschlagen</translation>
    </message>
    <message>
        <source>Done: %1. Could not be transferred: %2.</source>
        <translation>Fertig: %1. Nicht übertragen: %2.</translation>
    </message>
    <message>
        <source>Transfers are cut off such that they can go on.</source>
        <translation>Übertragungen werden so unterbrochen, dass sie fortgesetzt werden können.</translation>
    </message>
    <message>
        <source>The system gives the program no more threads.</source>
        <translation>Das System gibt dem Programm keine weiteren Threads.</translation>
    </message>
    <message>
        <source>The system lets the program open no more files.</source>
        <translation>Das System lässt das Programm keine weiteren Dateien öffnen.</translation>
    </message>
    <message>
        <source>There is not enough memory.</source>
        <translation>Es ist nicht genug Arbeitsspeicher vorhanden.</translation>
    </message>
    <message>
        <source>It did not work, and nobody said why.</source>
        <translation>Es ist aus unbekanntem Grund fehlgeschlagen.</translation>
    </message>
    <message>
        <source>The download is gone.</source>
        <translation>Der Download ist nicht mehr da.</translation>
    </message>
    <message>
        <source>This security key holds no passkey for Palvera.</source>
        <translation>Dieser Sicherheitsschlüssel enthält keinen Passkey für Palvera.</translation>
    </message>
    <message>
        <source>This security key has no PIN yet. Set one in your browser&apos;s settings.</source>
        <translation>Dieser Sicherheitsschlüssel hat noch keine PIN. Legen Sie eine in den Einstellungen Ihres Browsers fest.</translation>
    </message>
    <message>
        <source>This security key is locked: its PIN was wrong too often.</source>
        <translation>Dieser Sicherheitsschlüssel ist gesperrt: Die PIN war zu oft falsch.</translation>
    </message>
    <message>
        <source>Too many wrong PINs. Take the security key out and put it in again.</source>
        <translation>Zu viele falsche PINs. Ziehen Sie den Sicherheitsschlüssel ab und stecken Sie ihn wieder ein.</translation>
    </message>
    <message>
        <source>This security key was not touched in time. Try again.</source>
        <translation>Dieser Sicherheitsschlüssel wurde nicht rechtzeitig berührt. Versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>This security key was taken out. Put it in and try again.</source>
        <translation>Dieser Sicherheitsschlüssel wurde abgezogen. Stecken Sie ihn ein und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>This security key did not answer (%1).</source>
        <translation>Dieser Sicherheitsschlüssel hat nicht geantwortet (%1).</translation>
    </message>
    <message>
        <source>The new build could not be started: %1</source>
        <translation>Der neue Build konnte nicht gestartet werden: %1</translation>
    </message>
    <message>
        <source>The new build did not start.</source>
        <translation>Der neue Build ist nicht gestartet.</translation>
    </message>
    <message>
        <source>“%1” cannot be written: %2.</source>
        <translation>„%1“ kann nicht geschrieben werden: %2.</translation>
    </message>
    <message>
        <source>There is not enough memory to hold %1 MB at a time.</source>
        <translation>Der Arbeitsspeicher reicht nicht für %1 MB auf einmal.</translation>
    </message>
    <message>
        <source>“%1” cannot be opened: %2.</source>
        <translation>„%1“ kann nicht geöffnet werden: %2.</translation>
    </message>
    <message>
        <source>“%1” has another name in some folder, so it is not written.</source>
        <translation>„%1“ hat in einem Ordner noch einen anderen Namen und wird deshalb nicht geschrieben.</translation>
    </message>
    <message>
        <source>“%1” is being downloaded already.</source>
        <translation>„%1“ wird bereits heruntergeladen.</translation>
    </message>
    <message>
        <source>“%1” cannot be created: %2.</source>
        <translation>„%1“ kann nicht erstellt werden: %2.</translation>
    </message>
    <message>
        <source>“%1” cannot be read: %2.</source>
        <translation>„%1“ kann nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>There is not enough room for “%1”: it needs %2, and %3 is free.</source>
        <translation>Für „%1“ ist nicht genug Platz: Benötigt werden %2, frei sind %3.</translation>
    </message>
    <message>
        <source>“%1” was moved or removed while it was being downloaded.</source>
        <translation>„%1“ wurde während des Downloads verschoben oder entfernt.</translation>
    </message>
    <message>
        <source>“%1” cannot be made: %2.</source>
        <translation>„%1“ kann nicht angelegt werden: %2.</translation>
    </message>
    <message>
        <source>“%1” cannot be locked: %2.</source>
        <translation>„%1“ kann nicht gesperrt werden: %2.</translation>
    </message>
    <message>
        <source>That counts only for now: %1 cannot be written.</source>
        <translation>Das gilt nur vorübergehend: %1 kann nicht geschrieben werden.</translation>
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
        <translation>Die in %1 gespeicherte Anmeldung konnte nicht entfernt werden.</translation>
    </message>
    <message>
        <source>The platform&apos;s sign-in ends with the program.</source>
        <translation>Die Anmeldung bei der Plattform endet mit dem Programm.</translation>
    </message>
    <message>
        <source>The sign-in that is kept in %1 cannot be read.</source>
        <translation>Die in %1 gespeicherte Anmeldung kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The server&apos;s name was not found.</source>
        <translation>Der Name des Servers wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>The proxy&apos;s name was not found.</source>
        <translation>Der Name des Proxys wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>Could not connect to the server.</source>
        <translation>Die Verbindung zum Server ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>The proxy made no connection.</source>
        <translation>Der Proxy hat keine Verbindung hergestellt.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate is not trusted.</source>
        <translation>Dem Zertifikat des Servers wird nicht vertraut.</translation>
    </message>
    <message>
        <source>No encrypted connection to the server could be made.</source>
        <translation>Es konnte keine verschlüsselte Verbindung zum Server hergestellt werden.</translation>
    </message>
    <message>
        <source>The trusted certificates could not be read.</source>
        <translation>Die vertrauenswürdigen Zertifikate konnten nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The server did not answer.</source>
        <translation>Der Server hat nicht geantwortet.</translation>
    </message>
    <message>
        <source>The server&apos;s answer was not understood.</source>
        <translation>Die Antwort des Servers wurde nicht verstanden.</translation>
    </message>
    <message>
        <source>There is not enough memory for the request.</source>
        <translation>Der Arbeitsspeicher reicht für die Anfrage nicht aus.</translation>
    </message>
    <message>
        <source>The connection was lost.</source>
        <translation>Die Verbindung ist abgebrochen.</translation>
    </message>
    <message>
        <source>The proxy asks for a name and a password.</source>
        <translation>Der Proxy verlangt einen Namen und ein Passwort.</translation>
    </message>
    <message>
        <source>The proxy could not reach the server.</source>
        <translation>Der Proxy konnte den Server nicht erreichen.</translation>
    </message>
    <message>
        <source>The proxy refused the connection.</source>
        <translation>Der Proxy hat die Verbindung abgelehnt.</translation>
    </message>
    <message>
        <source>No answer within %1 seconds.</source>
        <translation>Keine Antwort innerhalb von %1 Sekunden.</translation>
    </message>
    <message>
        <source>The request took longer than %1 seconds.</source>
        <translation>Die Anfrage hat länger als %1 Sekunden gedauert.</translation>
    </message>
    <message>
        <source>Too many files are open.</source>
        <translation>Es sind zu viele Dateien geöffnet.</translation>
    </message>
    <message>
        <source>The server&apos;s answer is too large.</source>
        <translation>Die Antwort des Servers ist zu groß.</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>Es besteht keine Netzwerkverbindung.</translation>
    </message>
    <message>
        <source>The address is not valid.</source>
        <translation>Die Adresse ist ungültig.</translation>
    </message>
    <message>
        <source>The server sends on to an address that is not encrypted.</source>
        <translation>Der Server leitet an eine unverschlüsselte Adresse weiter.</translation>
    </message>
    <message>
        <source>The server sends on again and again.</source>
        <translation>Der Server leitet immer wieder weiter.</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>The platform does not say where this file is stored.</source>
        <translation>Die Plattform gibt nicht an, wo diese Datei gespeichert ist.</translation>
    </message>
    <message>
        <source>The platform does not say on which deliverable this file is.</source>
        <translation>Die Plattform gibt nicht an, zu welchem Deliverable diese Datei gehört.</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Uploads</source>
        <translation>Uploads</translation>
    </message>
    <message>
        <source>Masters added before a deal exists</source>
        <translation>Vor einem Deal hinzugefügte Master</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>A file without a name</source>
        <translation>Eine Datei ohne Namen</translation>
    </message>
    <message>
        <source>Today %1</source>
        <translation>Heute %1</translation>
    </message>
    <message>
        <source>Yesterday %1</source>
        <translation>Gestern %1</translation>
    </message>
    <message>
        <source>Nothing in Uploads yet</source>
        <translation>Noch nichts in „Uploads“</translation>
    </message>
    <message>
        <source>Drop master files here, or choose Upload. They can be added to projects later.</source>
        <translation>Legen Sie Master-Dateien hier ab oder wählen Sie „Hochladen“. Sie können später zu Projekten hinzugefügt werden.</translation>
    </message>
    <message>
        <source>Nothing matches</source>
        <translation>Keine Treffer</translation>
    </message>
    <message>
        <source>Try another word, or clear the search.</source>
        <translation>Versuchen Sie ein anderes Wort oder leeren Sie die Suche.</translation>
    </message>
    <message>
        <source>Nothing delivered yet</source>
        <translation>Noch nichts geliefert</translation>
    </message>
    <message>
        <source>Files delivered on the organisation&apos;s projects appear here. Masters added before a deal exists live under Uploads.</source>
        <translation>Hier erscheinen Dateien, die zu Projekten der Organisation geliefert wurden. Vor einem Deal hinzugefügte Master finden Sie unter „Uploads“.</translation>
    </message>
    <message>
        <source>Try another word or kind, or clear the search.</source>
        <translation>Versuchen Sie ein anderes Wort oder eine andere Art oder leeren Sie die Suche.</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Herunterladen</translation>
    </message>
    <message numerus="yes">
        <source>Download %n files</source>
        <translation>
            <numerusform>%n Datei herunterladen</numerusform>
            <numerusform>%n Dateien herunterladen</numerusform>
        </translation>
    </message>
    <message>
        <source>Drop to add to %1</source>
        <translation>Ablegen, um zu „%1“ hinzuzufügen</translation>
    </message>
    <message>
        <source>1 folder was left out: only files can be added. %1</source>
        <translation>1 Ordner wurde ausgelassen: Nur Dateien können hinzugefügt werden. %1</translation>
    </message>
    <message numerus="yes">
        <source>%n folders were left out: only files can be added. %1</source>
        <translation>
            <numerusform>%n Ordner wurde ausgelassen: Nur Dateien können hinzugefügt werden. %1</numerusform>
            <numerusform>%n Ordner wurden ausgelassen: Nur Dateien können hinzugefügt werden. %1</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 is on its way already.</source>
        <translation>%1 ist bereits unterwegs.</translation>
    </message>
    <message numerus="yes">
        <source>%n files are on their way already. %1</source>
        <translation>
            <numerusform>%n Datei ist bereits unterwegs. %1</numerusform>
            <numerusform>%n Dateien sind bereits unterwegs. %1</numerusform>
        </translation>
    </message>
    <message>
        <source>The platform no longer has “%1”. Nothing was sent.</source>
        <translation>„%1“ gibt es auf der Plattform nicht mehr. Es wurde nichts gesendet.</translation>
    </message>
    <message>
        <source>Filled</source>
        <translation>Belegt</translation>
    </message>
    <message>
        <source>Empty</source>
        <translation>Leer</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>Wartet</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>Angehalten</translation>
    </message>
    <message>
        <source>Transferring</source>
        <translation>Wird übertragen</translation>
    </message>
    <message>
        <source>The delivered file</source>
        <translation>Die gelieferte Datei</translation>
    </message>
    <message>
        <source>“%1” is a folder. Drop the file itself.</source>
        <translation>„%1“ ist ein Ordner. Legen Sie die Datei selbst ab.</translation>
    </message>
    <message>
        <source>%1 Left out: %2.</source>
        <translation>%1 Ausgelassen: %2.</translation>
    </message>
    <message>
        <source>about %1</source>
        <translation>etwa %1</translation>
    </message>
    <message>
        <source>about %1 tomorrow</source>
        <translation>morgen etwa %1</translation>
    </message>
    <message>
        <source>about %1 on %2</source>
        <translation>%2 etwa %1</translation>
    </message>
    <message>
        <source>more than %1 left</source>
        <translation>mehr als %1 übrig</translation>
    </message>
    <message>
        <source>%1 left</source>
        <translation>%1 übrig</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>%1 downloaded</source>
        <translation>%1 heruntergeladen</translation>
    </message>
    <message>
        <source>Not begun</source>
        <translation>Nicht begonnen</translation>
    </message>
    <message>
        <source>The file is not where it was.</source>
        <translation>Die Datei ist nicht mehr an ihrem Ort.</translation>
    </message>
    <message>
        <source>1 upload was cut off.</source>
        <translation>1 Upload wurde unterbrochen.</translation>
    </message>
    <message numerus="yes">
        <source>%n uploads were cut off.</source>
        <translation>
            <numerusform>%n Upload wurde unterbrochen.</numerusform>
            <numerusform>%n Uploads wurden unterbrochen.</numerusform>
        </translation>
    </message>
    <message>
        <source>1 download was cut off.</source>
        <translation>1 Download wurde unterbrochen.</translation>
    </message>
    <message numerus="yes">
        <source>%n downloads were cut off.</source>
        <translation>
            <numerusform>%n Download wurde unterbrochen.</numerusform>
            <numerusform>%n Downloads wurden unterbrochen.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 and %2 were cut off.</source>
        <translation>%1 und %2 wurden unterbrochen.</translation>
    </message>
    <message>
        <source>1 upload</source>
        <translation>1 Upload</translation>
    </message>
    <message numerus="yes">
        <source>%n uploads</source>
        <translation>
            <numerusform>%n Upload</numerusform>
            <numerusform>%n Uploads</numerusform>
        </translation>
    </message>
    <message>
        <source>1 download</source>
        <translation>1 Download</translation>
    </message>
    <message numerus="yes">
        <source>%n downloads</source>
        <translation>
            <numerusform>%n Download</numerusform>
            <numerusform>%n Downloads</numerusform>
        </translation>
    </message>
    <message>
        <source>Start now</source>
        <translation>Jetzt starten</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>Stop…</source>
        <translation>Stoppen&#xa0;…</translation>
    </message>
    <message>
        <source>Show in folder</source>
        <translation>Im Ordner anzeigen</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Show deliverable</source>
        <translation>Deliverable anzeigen</translation>
    </message>
    <message>
        <source>Copy error</source>
        <translation>Fehler kopieren</translation>
    </message>
    <message>
        <source>Copy name</source>
        <translation>Namen kopieren</translation>
    </message>
    <message>
        <source>Remove from list</source>
        <translation>Aus der Liste entfernen</translation>
    </message>
    <message>
        <source>Done · %1</source>
        <translation>Fertig · %1</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>Gestoppt</translation>
    </message>
    <message>
        <source>upload</source>
        <translation>Upload</translation>
    </message>
    <message>
        <source>download</source>
        <translation>Download</translation>
    </message>
    <message>
        <source>%1 percent</source>
        <translation>%1 Prozent</translation>
    </message>
    <message>
        <source>This computer is not connected to a network.</source>
        <translation>Dieser Computer ist mit keinem Netzwerk verbunden.</translation>
    </message>
    <message>
        <source>The platform cannot be reached.</source>
        <translation>Die Plattform ist nicht erreichbar.</translation>
    </message>
    <message>
        <source>The connection has come to a standstill.</source>
        <translation>Die Verbindung ist zum Stillstand gekommen.</translation>
    </message>
    <message>
        <source>%1, size not known yet</source>
        <translation>%1, Größe noch nicht bekannt</translation>
    </message>
    <message>
        <source>Size not known yet</source>
        <translation>Größe noch nicht bekannt</translation>
    </message>
    <message>
        <source>The platform is busy.</source>
        <translation>Die Plattform ist ausgelastet.</translation>
    </message>
    <message>
        <source>Uploading</source>
        <translation>Wird hochgeladen</translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation>Wird heruntergeladen</translation>
    </message>
    <message>
        <source>%1 Trying again in %2</source>
        <translation>%1 Neuer Versuch in %2</translation>
    </message>
    <message>
        <source>Stop this upload?</source>
        <translation>Diesen Upload stoppen?</translation>
    </message>
    <message>
        <source>Stop this download?</source>
        <translation>Diesen Download stoppen?</translation>
    </message>
    <message>
        <source>%1 has come down already. It is kept on disk.</source>
        <translation>%1 wurden bereits heruntergeladen. Sie bleiben auf dem Datenträger.</translation>
    </message>
    <message>
        <source>%1 has gone up already. Stopping throws it away, so nothing half delivered is left in storage.</source>
        <translation>%1 wurden bereits hochgeladen. Beim Stoppen werden sie verworfen, damit nichts halb Geliefertes im Speicher bleibt.</translation>
    </message>
    <message>
        <source>%1 of %2 parts done</source>
        <translation>%1 von %2 Teilen fertig</translation>
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
        <translation>Video</translation>
    </message>
    <message>
        <source>Audio</source>
        <translation>Audio</translation>
    </message>
    <message>
        <source>Subtitles</source>
        <translation>Untertitel</translation>
    </message>
    <message>
        <source>Artwork</source>
        <translation>Artwork</translation>
    </message>
    <message>
        <source>Documents</source>
        <translation>Dokumente</translation>
    </message>
    <message>
        <source>Metadata</source>
        <translation>Metadaten</translation>
    </message>
    <message>
        <source>Textless</source>
        <translation>Textless</translation>
    </message>
    <message>
        <source>“%1”</source>
        <translation>„%1“</translation>
    </message>
    <message numerus="yes">
        <source>%n more</source>
        <translation>
            <numerusform>%n weitere</numerusform>
            <numerusform>%n weitere</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1 und %2</translation>
    </message>
    <message>
        <source>PV_API is ignored: “%1” is not an address that begins with http:// or https://.</source>
        <translation>PV_API wird ignoriert: „%1“ ist keine Adresse, die mit http:// oder https:// beginnt.</translation>
    </message>
    <message>
        <source>The platform&apos;s address for storage is not encrypted, so it was not used.</source>
        <translation>Die Speicheradresse der Plattform ist nicht verschlüsselt und wurde deshalb nicht verwendet.</translation>
    </message>
    <message>
        <source>That was not an answer of the platform. A proxy or a sign-in page of the network may stand in between.</source>
        <translation>Das war keine Antwort der Plattform. Möglicherweise steht ein Proxy oder eine Anmeldeseite des Netzwerks dazwischen.</translation>
    </message>
    <message>
        <source>The platform&apos;s answer could not be read: %1</source>
        <translation>Die Antwort der Plattform konnte nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>The platform answered %1.</source>
        <translation>Die Plattform hat mit %1 geantwortet.</translation>
    </message>
    <message>
        <source>Extras</source>
        <translation>Extras</translation>
    </message>
    <message>
        <source>S%1 E%2</source>
        <translation>S%1 E%2</translation>
    </message>
    <message>
        <source>Season %1</source>
        <translation>Staffel %1</translation>
    </message>
    <message>
        <source>The JSON is too large.</source>
        <translation>Das JSON ist zu groß.</translation>
    </message>
    <message>
        <source>The JSON does not parse: %1.</source>
        <translation>Das JSON ist fehlerhaft: %1.</translation>
    </message>
    <message>
        <source>The JSON is not an object.</source>
        <translation>Das JSON ist kein Objekt.</translation>
    </message>
    <message>
        <source>“%1” is missing.</source>
        <translation>„%1“ fehlt.</translation>
    </message>
    <message>
        <source>“%1” is not what it should be.</source>
        <translation>„%1“ ist nicht, was es sein sollte.</translation>
    </message>
    <message>
        <source>The single sign-on step named no address.</source>
        <translation>Der Single-Sign-on-Schritt hat keine Adresse genannt.</translation>
    </message>
    <message>
        <source>An unknown sign-in step: %1.</source>
        <translation>Ein unbekannter Anmeldeschritt: %1.</translation>
    </message>
    <message>
        <source>Sign in to Live</source>
        <translation>Bei Live anmelden</translation>
    </message>
    <message>
        <source>Sign in to Staging</source>
        <translation>Bei Staging anmelden</translation>
    </message>
    <message>
        <source>Sign in</source>
        <translation>Anmelden</translation>
    </message>
    <message>
        <source>The sign-in window could not open.</source>
        <translation>Das Anmeldefenster konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>The sign-in window closed before it finished.</source>
        <translation>Das Anmeldefenster wurde vor dem Abschluss geschlossen.</translation>
    </message>
    <message>
        <source>The platform sent a challenge this app could not read.</source>
        <translation>Die Plattform hat eine Challenge gesendet, die diese App nicht lesen konnte.</translation>
    </message>
    <message>
        <source>The platform asked for a passkey of another site.</source>
        <translation>Die Plattform hat nach einem Passkey einer anderen Website gefragt.</translation>
    </message>
    <message numerus="yes">
        <source>That PIN is not right. %n tries left.</source>
        <translation>
            <numerusform>Diese PIN stimmt nicht. Noch %n Versuch.</numerusform>
            <numerusform>Diese PIN stimmt nicht. Noch %n Versuche.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 did not finish%2. Try again, or sign in another way.</source>
        <translation>%1 wurde nicht abgeschlossen%2. Versuchen Sie es erneut oder melden Sie sich auf anderem Weg an.</translation>
    </message>
    <message>
        <source>The sign-in in the browser</source>
        <translation>Die Anmeldung im Browser</translation>
    </message>
    <message>
        <source>Your organisation&apos;s sign-in</source>
        <translation>Die Anmeldung Ihrer Organisation</translation>
    </message>
    <message>
        <source>The passkey sign-in</source>
        <translation>Die Passkey-Anmeldung</translation>
    </message>
    <message>
        <source>The platform has not confirmed the file.</source>
        <translation>Die Plattform hat die Datei nicht bestätigt.</translation>
    </message>
    <message>
        <source>There are too many files named “%1” in that folder.</source>
        <translation>In diesem Ordner gibt es zu viele Dateien mit dem Namen „%1“.</translation>
    </message>
    <message>
        <source>“%1” cannot be removed.</source>
        <translation>„%1“ kann nicht entfernt werden.</translation>
    </message>
    <message>
        <source>Storage sent other bytes than those asked for.</source>
        <translation>Der Speicher hat andere Bytes gesendet als die angeforderten.</translation>
    </message>
    <message>
        <source>Storage sent %1 bytes of a chunk of %2.</source>
        <translation>Der Speicher hat %1 Bytes eines Abschnitts von %2 gesendet.</translation>
    </message>
    <message>
        <source>The file changed in storage while it was being downloaded. Download it again.</source>
        <translation>Die Datei wurde während des Downloads im Speicher geändert. Laden Sie sie erneut herunter.</translation>
    </message>
    <message>
        <source>That file could not be reached (storage answered %1).</source>
        <translation>Diese Datei war nicht erreichbar (der Speicher hat mit %1 geantwortet).</translation>
    </message>
    <message>
        <source>Storage did not say how large the file is.</source>
        <translation>Der Speicher hat nicht angegeben, wie groß die Datei ist.</translation>
    </message>
    <message>
        <source>That file is empty.</source>
        <translation>Diese Datei ist leer.</translation>
    </message>
    <message>
        <source>The progress of this download cannot be kept, so it must not be cut off: %1</source>
        <translation>Der Fortschritt dieses Downloads kann nicht gespeichert werden, er darf also nicht unterbrochen werden: %1</translation>
    </message>
    <message>
        <source>Storage answered %1 on a chunk.</source>
        <translation>Der Speicher hat bei einem Abschnitt mit %1 geantwortet.</translation>
    </message>
    <message>
        <source>No network.</source>
        <translation>Kein Netzwerk.</translation>
    </message>
    <message>
        <source>This upload cannot be recorded under the name “%1”.</source>
        <translation>Dieser Upload kann nicht unter dem Namen „%1“ aufgezeichnet werden.</translation>
    </message>
    <message>
        <source>The upload failed.</source>
        <translation>Der Upload ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>The platform gave an address that is none.</source>
        <translation>Die Plattform hat eine ungültige Adresse genannt.</translation>
    </message>
    <message>
        <source>Storage answered %1 on a part.</source>
        <translation>Der Speicher hat bei einem Teil mit %1 geantwortet.</translation>
    </message>
    <message>
        <source>Storage answers %1.</source>
        <translation>Der Speicher antwortet mit %1.</translation>
    </message>
    <message>
        <source>The storage service returned no ETag.</source>
        <translation>Der Speicherdienst hat kein ETag zurückgegeben.</translation>
    </message>
    <message>
        <source>The connection stopped moving for 20 seconds.</source>
        <translation>Die Verbindung stand 20 Sekunden lang still.</translation>
    </message>
    <message>
        <source>Invalid number of keys found, expected one.</source>
        <translation>Ungültige Anzahl von Schlüsseln; erwartet wird einer.</translation>
    </message>
    <message>
        <source>No answer from storage for %1 seconds.</source>
        <translation>Seit %1 Sekunden keine Antwort vom Speicher.</translation>
    </message>
    <message>
        <source>“%1” is on its way there already.</source>
        <translation>„%1“ ist bereits dorthin unterwegs.</translation>
    </message>
    <message>
        <source>This file is being sent already. Waiting for that.</source>
        <translation>Diese Datei wird bereits gesendet. Darauf wird gewartet.</translation>
    </message>
    <message>
        <source>The file changed while it was being sent, so it was not delivered. Send it again.</source>
        <translation>Die Datei wurde während des Sendens geändert und deshalb nicht geliefert. Senden Sie sie erneut.</translation>
    </message>
    <message>
        <source>“%1” is no longer in %2.</source>
        <translation>„%1“ ist nicht mehr in %2.</translation>
    </message>
    <message>
        <source>“%1” is a folder. Only files can be sent.</source>
        <translation>„%1“ ist ein Ordner. Nur Dateien können gesendet werden.</translation>
    </message>
    <message>
        <source>“%1” is not an ordinary file.</source>
        <translation>„%1“ ist keine gewöhnliche Datei.</translation>
    </message>
    <message>
        <source>The platform does not know this upload any more: it is sent from its start.</source>
        <translation>Die Plattform kennt diesen Upload nicht mehr: Er wird von vorn gesendet.</translation>
    </message>
    <message>
        <source>Waiting for the platform.</source>
        <translation>Warten auf die Plattform.</translation>
    </message>
    <message>
        <source>Finishing on the platform.</source>
        <translation>Abschluss auf der Plattform.</translation>
    </message>
    <message>
        <source>“%1” has changed since: it is sent from its start.</source>
        <translation>„%1“ wurde inzwischen geändert: Die Datei wird von vorn gesendet.</translation>
    </message>
    <message>
        <source>The upload of “%1” that was cut off here is kept.</source>
        <translation>Der hier unterbrochene Upload von „%1“ bleibt erhalten.</translation>
    </message>
    <message>
        <source>“%1” has another name by now, “%2”, and must be sent anew.</source>
        <translation>„%1“ heißt inzwischen „%2“ und muss neu gesendet werden.</translation>
    </message>
    <message>
        <source>The platform cut the file into parts that do not add up to it.</source>
        <translation>Die Plattform hat die Datei in Teile zerlegt, die sie nicht vollständig ergeben.</translation>
    </message>
    <message>
        <source>The progress of this upload cannot be kept, so it must not be cut off: %1</source>
        <translation>Der Fortschritt dieses Uploads kann nicht gespeichert werden, er darf also nicht unterbrochen werden: %1</translation>
    </message>
    <message>
        <source>The upload is missing parts (%1 of %2). Resume it to send the rest.</source>
        <translation>Dem Upload fehlen Teile (%1 von %2). Setzen Sie ihn fort, um den Rest zu senden.</translation>
    </message>
    <message>
        <source>The platform did not sign part %1.</source>
        <translation>Die Plattform hat Teil %1 nicht signiert.</translation>
    </message>
    <message>
        <source>That file has no address.</source>
        <translation>Diese Datei hat keine Adresse.</translation>
    </message>
    <message>
        <source>Storage has only %1 of “%2”, and the platform lists %3.</source>
        <translation>Der Speicher hat nur %1 von „%2“, die Plattform führt %3 auf.</translation>
    </message>
    <message>
        <source>Storage has %1 of “%2”, more than the %3 that the platform lists.</source>
        <translation>Der Speicher hat %1 von „%2“, mehr als die %3, die die Plattform aufführt.</translation>
    </message>
    <message>
        <source>“%1” is being downloaded to that folder already.</source>
        <translation>„%1“ wird bereits in diesen Ordner heruntergeladen.</translation>
    </message>
    <message>
        <source>waiting</source>
        <translation>wartet</translation>
    </message>
    <message>
        <source>running</source>
        <translation>läuft</translation>
    </message>
    <message>
        <source>retrying</source>
        <translation>neuer Versuch</translation>
    </message>
    <message>
        <source>paused</source>
        <translation>angehalten</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>fehlgeschlagen</translation>
    </message>
    <message>
        <source>done</source>
        <translation>fertig</translation>
    </message>
    <message>
        <source>stopped</source>
        <translation>gestoppt</translation>
    </message>
    <message>
        <source>Second try.</source>
        <translation>Zweiter Versuch.</translation>
    </message>
    <message>
        <source>Third try.</source>
        <translation>Dritter Versuch.</translation>
    </message>
    <message>
        <source>Fourth try.</source>
        <translation>Vierter Versuch.</translation>
    </message>
    <message>
        <source>Fifth try.</source>
        <translation>Fünfter Versuch.</translation>
    </message>
    <message>
        <source>Sixth try.</source>
        <translation>Sechster Versuch.</translation>
    </message>
    <message>
        <source>Seventh try.</source>
        <translation>Siebter Versuch.</translation>
    </message>
    <message>
        <source>Eighth try.</source>
        <translation>Achter Versuch.</translation>
    </message>
    <message>
        <source>Waiting for you to sign in</source>
        <translation>Wartet auf Ihre Anmeldung</translation>
    </message>
    <message>
        <source>Assets</source>
        <translation>Assets</translation>
    </message>
    <message>
        <source>Files are being transferred.</source>
        <translation>Dateien werden übertragen.</translation>
    </message>
    <message>
        <source>The update could not be stored: %1.</source>
        <translation>Das Update konnte nicht gespeichert werden: %1.</translation>
    </message>
    <message>
        <source>The update is too large: %1.</source>
        <translation>Das Update ist zu groß: %1.</translation>
    </message>
    <message>
        <source>There is not enough room on the disk for the update of %1.</source>
        <translation>Auf dem Datenträger ist nicht genug Platz für das Update von %1.</translation>
    </message>
    <message>
        <source>“%1” cannot be made anew: %2.</source>
        <translation>„%1“ kann nicht neu angelegt werden: %2.</translation>
    </message>
    <message>
        <source>Palvera %1, build %2, is available.</source>
        <translation>Palvera %1, Build %2, ist verfügbar.</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installieren</translation>
    </message>
    <message>
        <source>Checking</source>
        <translation>Wird geprüft</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Neu starten</translation>
    </message>
    <message>
        <source>Palvera %1 is ready. Restart to use it; you stay signed in.</source>
        <translation>Palvera %1 ist bereit. Starten Sie neu, um es zu verwenden; Sie bleiben angemeldet.</translation>
    </message>
    <message>
        <source>Restarting</source>
        <translation>Neustart</translation>
    </message>
    <message>
        <source>Retry update</source>
        <translation>Update erneut versuchen</translation>
    </message>
    <message>
        <source>A transfer is still moving. Uploads stop and wait under Interrupted, and pick up from the part they reached.</source>
        <translation>Eine Übertragung läuft noch. Uploads halten an, warten unter „Unterbrochen“ und werden ab dem erreichten Teil fortgesetzt.</translation>
    </message>
    <message numerus="yes">
        <source>%n transfers are still moving. Uploads stop and wait under Interrupted, and pick up from the part they reached.</source>
        <translation>
            <numerusform>%n Übertragung läuft noch. Uploads halten an, warten unter „Unterbrochen“ und werden ab dem erreichten Teil fortgesetzt.</numerusform>
            <numerusform>%n Übertragungen laufen noch. Uploads halten an, warten unter „Unterbrochen“ und werden ab dem erreichten Teil fortgesetzt.</numerusform>
        </translation>
    </message>
    <message>
        <source>None yet: the update feed does not answer.</source>
        <translation>Noch keine: Der Update-Feed antwortet nicht.</translation>
    </message>
    <message>
        <source>None yet</source>
        <translation>Noch keine</translation>
    </message>
    <message>
        <source>%1; the update feed does not answer.</source>
        <translation>%1; der Update-Feed antwortet nicht.</translation>
    </message>
    <message>
        <source>Palvera is up to date</source>
        <translation>Palvera ist aktuell</translation>
    </message>
    <message>
        <source>You have %1.</source>
        <translation>Sie haben %1.</translation>
    </message>
    <message>
        <source>Could not check for updates</source>
        <translation>Nach Updates konnte nicht gesucht werden</translation>
    </message>
    <message>
        <source>The update feed did not answer. Check your connection and try again.</source>
        <translation>Der Update-Feed hat nicht geantwortet. Prüfen Sie Ihre Verbindung und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>The preferences could not be read. They begin anew; the file is now %1.</source>
        <translation>Die Einstellungen konnten nicht gelesen werden. Sie beginnen neu; die Datei heißt jetzt %1.</translation>
    </message>
    <message>
        <source>The preferences in %1 cannot be read.</source>
        <translation>Die Einstellungen in %1 können nicht gelesen werden.</translation>
    </message>
</context>
<context>
    <name>ReloadButton</name>
    <message>
        <source>Reload</source>
        <translation>Neu laden</translation>
    </message>
</context>
<context>
    <name>RootView</name>
    <message>
        <source>Not encrypted</source>
        <translation>Nicht verschlüsselt</translation>
    </message>
    <message>
        <source>The service address that PV_API names is not encrypted: others on the way can read along.</source>
        <translation>Die in PV_API genannte Dienstadresse ist nicht verschlüsselt: Andere können unterwegs mitlesen.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Send anyway</source>
        <translation>Trotzdem senden</translation>
    </message>
    <message>
        <source>Check this file before it goes</source>
        <translation>Prüfen Sie diese Datei vor dem Senden</translation>
    </message>
    <message>
        <source>Stay signed in</source>
        <translation>Angemeldet bleiben</translation>
    </message>
    <message>
        <source>Sign out</source>
        <translation>Abmelden</translation>
    </message>
    <message>
        <source>Sign out while files are moving?</source>
        <translation>Abmelden, während Dateien übertragen werden?</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Clear the search</source>
        <translation>Suche leeren</translation>
    </message>
</context>
<context>
    <name>SecureField</name>
    <message>
        <source>Caps Lock is on</source>
        <translation>Die Feststelltaste ist aktiv</translation>
    </message>
    <message>
        <source>Hide what is entered</source>
        <translation>Eingabe verbergen</translation>
    </message>
    <message>
        <source>Show what is entered</source>
        <translation>Eingabe anzeigen</translation>
    </message>
</context>
<context>
    <name>SendingDialogs</name>
    <message>
        <source>Send</source>
        <translation>Senden</translation>
    </message>
    <message>
        <source>Send it here</source>
        <translation>Hierher senden</translation>
    </message>
    <message>
        <source>Send a full-length file to Textless elements?</source>
        <translation>Eine Datei in voller Länge an „Textless elements“ senden?</translation>
    </message>
</context>
<context>
    <name>SettingsSheet</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Downloads</source>
        <translation>Downloads</translation>
    </message>
    <message>
        <source>Asked at the first download</source>
        <translation>Wird beim ersten Download gefragt</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Change the downloads folder…</source>
        <translation>Download-Ordner ändern&#xa0;…</translation>
    </message>
    <message>
        <source>Change…</source>
        <translation>Ändern&#xa0;…</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>Übertragungen</translation>
    </message>
    <message>
        <source>Uploads at once</source>
        <translation>Gleichzeitige Uploads</translation>
    </message>
    <message>
        <source>Downloads at once</source>
        <translation>Gleichzeitige Downloads</translation>
    </message>
    <message>
        <source>Give MB/s, from 0.1 on, or leave it empty.</source>
        <translation>Geben Sie MB/s ab 0,1 an oder lassen Sie das Feld leer.</translation>
    </message>
    <message>
        <source>Upload limit, MB/s</source>
        <translation>Upload-Limit, MB/s</translation>
    </message>
    <message>
        <source>Download limit, MB/s</source>
        <translation>Download-Limit, MB/s</translation>
    </message>
    <message>
        <source>Give times such as 08:00.</source>
        <translation>Geben Sie Zeiten wie 08:00 an.</translation>
    </message>
    <message>
        <source>Off: the limits hold all day long.</source>
        <translation>Aus: Die Limits gelten ganztägig.</translation>
    </message>
    <message>
        <source>Limit only between</source>
        <translation>Limit nur zwischen</translation>
    </message>
    <message>
        <source>Limit from</source>
        <translation>Limit ab</translation>
    </message>
    <message>
        <source>Limit to</source>
        <translation>Limit bis</translation>
    </message>
    <message>
        <source>While files move</source>
        <translation>Während Übertragungen laufen</translation>
    </message>
    <message>
        <source>Keep the computer awake</source>
        <translation>Computer wach halten</translation>
    </message>
    <message>
        <source>Notify when the last one has ended</source>
        <translation>Melden, wenn die letzte beendet ist</translation>
    </message>
    <message>
        <source>When the window is closed</source>
        <translation>Wenn das Fenster geschlossen wird</translation>
    </message>
    <message>
        <source>This desktop shows no tray, so that closing the window quits.</source>
        <translation>Diese Oberfläche zeigt keinen Infobereich, daher beendet das Schließen des Fensters das Programm.</translation>
    </message>
    <message>
        <source>Palvera stays in the tray, and starts there with your session.</source>
        <translation>Palvera bleibt im Infobereich und startet dort mit Ihrer Sitzung.</translation>
    </message>
    <message>
        <source>Stay in the background</source>
        <translation>Im Hintergrund bleiben</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Choose where downloads go</source>
        <translation>Ziel für Downloads wählen</translation>
    </message>
    <message>
        <source>No limit</source>
        <translation>Kein Limit</translation>
    </message>
    <message>
        <source>Tell screen readers how far files are</source>
        <translation>Vorleseprogrammen sagen, wie weit Dateien sind</translation>
    </message>
</context>
<context>
    <name>ShortcutsSheet</name>
    <message>
        <source>Alt+Left</source>
        <translation>Alt+Links</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>F5</source>
        <translation>F5</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Neu laden</translation>
    </message>
    <message>
        <source>Ctrl+F</source>
        <translation>Ctrl+F</translation>
    </message>
    <message>
        <source>Search the list</source>
        <translation>Liste durchsuchen</translation>
    </message>
    <message>
        <source>Ctrl+Shift+T</source>
        <translation>Ctrl+Shift+T</translation>
    </message>
    <message>
        <source>Show the transfers</source>
        <translation>Übertragungen anzeigen</translation>
    </message>
    <message>
        <source>F10</source>
        <translation>F10</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>Ctrl+,</source>
        <translation>Ctrl+,</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Ctrl+?</source>
        <translation>Ctrl+?</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>F1</source>
        <translation>F1</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Ctrl+U</source>
        <translation>Ctrl+U</translation>
    </message>
    <message>
        <source>Check for updates</source>
        <translation>Nach Updates suchen</translation>
    </message>
    <message>
        <source>Ctrl+W</source>
        <translation>Ctrl+W</translation>
    </message>
    <message>
        <source>Close the window</source>
        <translation>Fenster schließen</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Leertaste</translation>
    </message>
    <message>
        <source>Pause or resume the transfer</source>
        <translation>Übertragung anhalten oder fortsetzen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Entf</translation>
    </message>
    <message>
        <source>Stop the transfer, or take it off the list</source>
        <translation>Übertragung stoppen oder aus der Liste nehmen</translation>
    </message>
    <message>
        <source>Ctrl+Up, Ctrl+Down</source>
        <translation>Ctrl+Auf, Ctrl+Ab</translation>
    </message>
    <message>
        <source>Move the transfer in the queue</source>
        <translation>Übertragung in der Warteschlange verschieben</translation>
    </message>
    <message>
        <source>Shift+F10</source>
        <translation>Shift+F10</translation>
    </message>
    <message>
        <source>Menu of the row</source>
        <translation>Menü der Zeile</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Ctrl++, Ctrl+-, Ctrl+0</source>
        <translation>Ctrl++, Ctrl+-, Ctrl+0</translation>
    </message>
    <message>
        <source>Larger, smaller, usual text</source>
        <translation>Text größer, kleiner, wie üblich</translation>
    </message>
</context>
<context>
    <name>SignInFace</name>
    <message>
        <source>Continue</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Signing in</source>
        <translation>Anmeldung läuft</translation>
    </message>
</context>
<context>
    <name>SiteChoice</name>
    <message>
        <source>Platform</source>
        <translation>Plattform</translation>
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
        <translation>Ein Konto gilt für beide. Jede behält ihre eigene Anmeldung.</translation>
    </message>
</context>
<context>
    <name>Spinner</name>
    <message>
        <source>Busy</source>
        <translation>Beschäftigt</translation>
    </message>
</context>
<context>
    <name>StatusBadge</name>
    <message>
        <source>A file is filed against this</source>
        <translation>Dafür ist eine Datei abgelegt</translation>
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
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stoppen</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
</context>
<context>
    <name>TransfersButton</name>
    <message>
        <source>Transfers</source>
        <translation>Übertragungen</translation>
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
        <translation>Alle fortsetzen</translation>
    </message>
    <message>
        <source>Pause all</source>
        <translation>Alle anhalten</translation>
    </message>
    <message>
        <source>Stop all</source>
        <translation>Alle stoppen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Liste leeren</translation>
    </message>
</context>
<context>
    <name>TransfersView</name>
    <message>
        <source>Transfers</source>
        <translation>Übertragungen</translation>
    </message>
    <message>
        <source>In flight</source>
        <translation>Läuft</translation>
    </message>
    <message>
        <source>Finished</source>
        <translation>Beendet</translation>
    </message>
    <message>
        <source>Interrupted</source>
        <translation>Unterbrochen</translation>
    </message>
    <message>
        <source>Nothing moving</source>
        <translation>Nichts läuft</translation>
    </message>
    <message>
        <source>Nothing finished yet</source>
        <translation>Noch nichts beendet</translation>
    </message>
    <message>
        <source>Nothing interrupted</source>
        <translation>Nichts unterbrochen</translation>
    </message>
    <message>
        <source>Keep going</source>
        <translation>Weitermachen</translation>
    </message>
    <message>
        <source>Stop all</source>
        <translation>Alle stoppen</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stoppen</translation>
    </message>
    <message>
        <source>Stop all transfers?</source>
        <translation>Alle Übertragungen stoppen?</translation>
    </message>
</context>
<context>
    <name>TransfersWindow</name>
    <message>
        <source>Transfers</source>
        <translation>Übertragungen</translation>
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
        <translation>Palvera anzeigen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
</context>
<context>
    <name>UpdateAlert</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
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
        <translation>Noch nicht</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Neu starten</translation>
    </message>
    <message>
        <source>Restart Palvera now?</source>
        <translation>Palvera jetzt neu starten?</translation>
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
        <translation>Palvera %1 ist auf diesem Computer nicht gestartet, deshalb läuft stattdessen %2.</translation>
    </message>
</context>
<context>
    <name>palvera::Announcements</name>
    <message>
        <source>“%1” is done.</source>
        <translation>„%1“ ist fertig.</translation>
    </message>
    <message>
        <source>“%1” could not be transferred. %2</source>
        <translation>„%1“ konnte nicht übertragen werden. %2</translation>
    </message>
    <message>
        <source>“%1” is at a standstill. %2</source>
        <translation>„%1“ steht still. %2</translation>
    </message>
    <message>
        <source>“%1”: %2 percent.</source>
        <translation>„%1“: %2 Prozent.</translation>
    </message>
</context>
<context>
    <name>palvera::AssetsView</name>
    <message>
        <source>Uploads</source>
        <translation>Uploads</translation>
    </message>
    <message>
        <source>Assets</source>
        <translation>Assets</translation>
    </message>
    <message>
        <source>Projects</source>
        <translation>Projekte</translation>
    </message>
    <message>
        <source>%1 loaded</source>
        <translation>%1 geladen</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>The files did not arrive from the other program. Drop them again, or choose Upload.</source>
        <translation>Die Dateien sind vom anderen Programm nicht angekommen. Legen Sie sie erneut ab oder wählen Sie „Hochladen“.</translation>
    </message>
    <message>
        <source>That is not a file on this computer. Save it here first, then drop it.</source>
        <translation>Das ist keine Datei auf diesem Computer. Speichern Sie sie zuerst hier und legen Sie sie dann ab.</translation>
    </message>
    <message>
        <source>What is not a file on this computer was left out. Save it here first.</source>
        <translation>Was keine Datei auf diesem Computer ist, wurde ausgelassen. Speichern Sie es zuerst hier.</translation>
    </message>
    <message>
        <source>All types</source>
        <translation>Alle Typen</translation>
    </message>
</context>
<context>
    <name>palvera::DeliverableView</name>
    <message>
        <source>The last upload failed: %1</source>
        <translation>Der letzte Upload ist fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>The upload of “%1” was cut off, and the file is not where it was. %2.</source>
        <translation>Der Upload von „%1“ wurde unterbrochen, und die Datei ist nicht mehr an ihrem Ort. %2.</translation>
    </message>
    <message>
        <source>The upload of “%1” was cut off. %2.</source>
        <translation>Der Upload von „%1“ wurde unterbrochen. %2.</translation>
    </message>
</context>
<context>
    <name>palvera::DeliverablesView</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Upload failed</source>
        <translation>Upload fehlgeschlagen</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message>
        <source>Platform</source>
        <translation>Plattform</translation>
    </message>
    <message>
        <source>a file is filed</source>
        <translation>eine Datei ist abgelegt</translation>
    </message>
</context>
<context>
    <name>palvera::FileSender</name>
    <message>
        <source>The file did not arrive from the other program. Drop it again, or choose it here.</source>
        <translation>Die Datei ist vom anderen Programm nicht angekommen. Legen Sie sie erneut ab oder wählen Sie sie hier aus.</translation>
    </message>
    <message>
        <source>That is not a file on this computer. Save it here first, then drop it.</source>
        <translation>Das ist keine Datei auf diesem Computer. Speichern Sie sie zuerst hier und legen Sie sie dann ab.</translation>
    </message>
    <message>
        <source>“%1” was not sent to “%2”. %3</source>
        <translation>„%1“ wurde nicht an „%2“ gesendet. %3</translation>
    </message>
    <message>
        <source>It looks too long for that: it is %1.</source>
        <translation>Die Datei ist dafür wohl zu lang: Sie hat %1.</translation>
    </message>
    <message>
        <source>Only “%1” was taken.</source>
        <translation>Nur „%1“ wurde angenommen.</translation>
    </message>
    <message>
        <source>“%1” is on its way already. Stop it before you send another file.</source>
        <translation>„%1“ ist bereits unterwegs. Stoppen Sie diese Datei, bevor Sie eine andere senden.</translation>
    </message>
    <message>
        <source>%1 is %2. Textless elements are usually a few minutes long. The picture master row is probably the right place.</source>
        <translation>%1 hat %2. „Textless elements“ sind meist wenige Minuten lang. Richtig ist wahrscheinlich die Zeile des Bildmasters.</translation>
    </message>
    <message>
        <source>This file</source>
        <translation>Diese Datei</translation>
    </message>
</context>
<context>
    <name>palvera::InterruptedView</name>
    <message>
        <source>Discard this upload?</source>
        <translation>Diesen Upload verwerfen?</translation>
    </message>
    <message>
        <source>Discard this download?</source>
        <translation>Diesen Download verwerfen?</translation>
    </message>
    <message>
        <source>“%1” has not begun to go up. Your file stays as it is.</source>
        <translation>Der Upload von „%1“ hat noch nicht begonnen. Ihre Datei bleibt, wie sie ist.</translation>
    </message>
    <message>
        <source>“%1”: %2. What storage has of it is thrown away; your file stays as it is.</source>
        <translation>„%1“: %2. Was davon im Speicher liegt, wird verworfen; Ihre Datei bleibt, wie sie ist.</translation>
    </message>
    <message>
        <source>“%1” has not begun to come down.</source>
        <translation>Der Download von „%1“ hat noch nicht begonnen.</translation>
    </message>
    <message>
        <source>“%1”: %2 downloaded. That is removed from “%3”.</source>
        <translation>„%1“: %2 heruntergeladen. Das wird aus „%3“ entfernt.</translation>
    </message>
    <message>
        <source>That is not a file on this computer.</source>
        <translation>Das ist keine Datei auf diesem Computer.</translation>
    </message>
    <message>
        <source>“%1” in “%2” has the size and the time of the file that was being sent. Only the rest of it is sent.</source>
        <translation>„%1“ in „%2“ hat die Größe und die Zeit der Datei, die gesendet wurde. Nur der Rest wird gesendet.</translation>
    </message>
    <message>
        <source>“%1” in “%2” is not as the file that was being sent: its size or the time of its last change is another one. It can be sent from the start; what had gone up is thrown away then.</source>
        <translation>„%1“ in „%2“ ist nicht wie die Datei, die gesendet wurde: Größe oder Zeit der letzten Änderung sind anders. Sie kann von vorn gesendet werden; was schon hochgeladen war, wird dann verworfen.</translation>
    </message>
    <message>
        <source>That file has changed meanwhile.</source>
        <translation>Diese Datei wurde inzwischen geändert.</translation>
    </message>
</context>
<context>
    <name>palvera::LoginView</name>
    <message>
        <source>Waiting for Palvera to answer…</source>
        <translation>Warten auf eine Antwort von Palvera&#xa0;…</translation>
    </message>
    <message>
        <source>This computer is not connected to a network.</source>
        <translation>Dieser Computer ist mit keinem Netzwerk verbunden.</translation>
    </message>
    <message>
        <source>That sign-in was cancelled. Start it again to use it.</source>
        <translation>Diese Anmeldung wurde abgebrochen. Starten Sie sie erneut, um sie zu verwenden.</translation>
    </message>
    <message>
        <source>That sign-in was not started here, so it was not used.</source>
        <translation>Diese Anmeldung wurde nicht hier begonnen und deshalb nicht verwendet.</translation>
    </message>
    <message>
        <source>Palvera can be reached again. Begin with your work email.</source>
        <translation>Palvera ist wieder erreichbar. Beginnen Sie mit Ihrer geschäftlichen E-Mail-Adresse.</translation>
    </message>
    <message>
        <source>Cannot reach Palvera. Check your connection and try again.</source>
        <translation>Palvera ist nicht erreichbar. Prüfen Sie Ihre Verbindung und versuchen Sie es erneut.</translation>
    </message>
    <message>
        <source>Could not send that. Check your connection.</source>
        <translation>Das konnte nicht gesendet werden. Prüfen Sie Ihre Verbindung.</translation>
    </message>
    <message>
        <source>That passkey did not work. Sign in another way.</source>
        <translation>Dieser Passkey hat nicht funktioniert. Melden Sie sich auf anderem Weg an.</translation>
    </message>
</context>
<context>
    <name>palvera::ProjectsView</name>
    <message>
        <source>Platform</source>
        <translation>Plattform</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
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
        <translation>Eine Datei wird übertragen. Sie wartet unter „Unterbrochen“ und wird an derselben Stelle fortgesetzt, sobald Sie wieder angemeldet sind.</translation>
    </message>
    <message>
        <source>The deliverable cannot be shown. %1</source>
        <translation>Das Deliverable kann nicht angezeigt werden. %1</translation>
    </message>
    <message>
        <source>The platform no longer has that deliverable.</source>
        <translation>Dieses Deliverable gibt es auf der Plattform nicht mehr.</translation>
    </message>
    <message>
        <source>Your sign-in has expired. Sign in again.</source>
        <translation>Ihre Anmeldung ist abgelaufen. Melden Sie sich erneut an.</translation>
    </message>
    <message numerus="yes">
        <source>%n files are moving. They wait under Interrupted and go on from where they were once you are signed in again.</source>
        <translation>
            <numerusform>%n Datei wird übertragen. Sie wartet unter „Unterbrochen“ und wird an derselben Stelle fortgesetzt, sobald Sie wieder angemeldet sind.</numerusform>
            <numerusform>%n Dateien werden übertragen. Sie warten unter „Unterbrochen“ und werden an derselben Stelle fortgesetzt, sobald Sie wieder angemeldet sind.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>palvera::RowDrop</name>
    <message>
        <source>Send “%1” to %2?</source>
        <translation>„%1“ an „%2“ senden?</translation>
    </message>
    <message>
        <source>It replaces “%1”.</source>
        <translation>Sie ersetzt „%1“.</translation>
    </message>
    <message>
        <source>One file goes to it. Left out: %1.</source>
        <translation>Eine Datei wird gesendet. Ausgelassen: %1.</translation>
    </message>
</context>
<context>
    <name>palvera::Session</name>
    <message>
        <source>Signed in, but only for now: %1</source>
        <translation>Angemeldet, aber nur vorübergehend: %1</translation>
    </message>
    <message>
        <source>You are signed in as %1.</source>
        <translation>Sie sind als %1 angemeldet.</translation>
    </message>
    <message>
        <source>Signed out on this computer. The platform could not be told.</source>
        <translation>Auf diesem Computer abgemeldet. Die Plattform konnte nicht benachrichtigt werden.</translation>
    </message>
</context>
<context>
    <name>palvera::TransfersView</name>
    <message>
        <source>%1 cut off</source>
        <translation>%1 unterbrochen</translation>
    </message>
    <message>
        <source>Going to %1

%2</source>
        <translation>Ziel: %1

%2</translation>
    </message>
    <message>
        <source>In flight</source>
        <translation>Läuft</translation>
    </message>
    <message>
        <source>Finished</source>
        <translation>Beendet</translation>
    </message>
    <message>
        <source>Interrupted</source>
        <translation>Unterbrochen</translation>
    </message>
    <message>
        <source>What has gone up is thrown away, so nothing half delivered is left in storage. What has come down is kept on disk.</source>
        <translation>Was hochgeladen wurde, wird verworfen, damit nichts halb Geliefertes im Speicher bleibt. Was heruntergeladen wurde, bleibt auf dem Datenträger.</translation>
    </message>
</context>
<context>
    <name>palvera::Updater</name>
    <message>
        <source>Updates of this copy come with those of the system.</source>
        <translation>Updates dieser Kopie kommen mit denen des Systems.</translation>
    </message>
    <message>
        <source>You have %1.</source>
        <translation>Sie haben %1.</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <translation>Es wird nach Updates gesucht&#xa0;…</translation>
    </message>
    <message>
        <source>The download failed.</source>
        <translation>Der Download ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>The installer is missing from this copy of the app.</source>
        <translation>In dieser Kopie der App fehlt das Installationsprogramm.</translation>
    </message>
    <message>
        <source>The installer did not answer: %1</source>
        <translation>Das Installationsprogramm hat nicht geantwortet: %1</translation>
    </message>
</context>
</TS>
