<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es_ES" sourcelanguage="en">
<context>
    <name>AboutSheet</name>
    <message>
        <source>About Palvera</source>
        <translation>Acerca de Palvera</translation>
    </message>
    <message>
        <source>Palvera</source>
        <translation>Palvera</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Versión %1</translation>
    </message>
    <message>
        <source>Last check for updates</source>
        <translation>Última búsqueda de actualizaciones</translation>
    </message>
    <message>
        <source>Last failure</source>
        <translation>Último error</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Buscar actualizaciones…</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Licences</source>
        <translation>Licencias</translation>
    </message>
    <message>
        <source>Palvera works with Qt (LGPL 3), Boost (Boost Software License), libcurl (curl licence), OpenSSL (Apache 2.0), libfido2 and libarchive (BSD), the symbols of Phosphor (MIT) and the typeface Inter (Open Font License).</source>
        <translation>Palvera usa Qt (LGPL 3), Boost (Boost Software License), libcurl (licencia curl), OpenSSL (Apache 2.0), libfido2 y libarchive (BSD), los símbolos de Phosphor (MIT) y el tipo de letra Inter (Open Font License).</translation>
    </message>
    <message>
        <source>Show their texts</source>
        <translation>Mostrar sus textos</translation>
    </message>
</context>
<context>
    <name>AccountMenu</name>
    <message>
        <source>Account</source>
        <translation>Cuenta</translation>
    </message>
</context>
<context>
    <name>AccountRows</name>
    <message>
        <source>Sign out</source>
        <translation>Cerrar sesión</translation>
    </message>
</context>
<context>
    <name>AssetTableRow</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
    </message>
    <message>
        <source>Deal</source>
        <translation>Acuerdo</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Tipo</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Tamaño</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Fecha</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Reintentar</translation>
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
        <translation>Abrir</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Reintentar</translation>
    </message>
    <message>
        <source>Copy name</source>
        <translation>Copiar el nombre</translation>
    </message>
    <message>
        <source>Select all</source>
        <translation>Seleccionar todo</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Atrás</translation>
    </message>
</context>
<context>
    <name>AssetsTable</name>
    <message>
        <source>Name</source>
        <translation>Nombre</translation>
    </message>
    <message>
        <source>Deal</source>
        <translation>Acuerdo</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Tipo</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Tamaño</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Fecha</translation>
    </message>
    <message>
        <source>Loading</source>
        <translation>Cargando</translation>
    </message>
    <message>
        <source>Load more</source>
        <translation>Cargar más</translation>
    </message>
</context>
<context>
    <name>AssetsView</name>
    <message>
        <source>Kind</source>
        <translation>Clase</translation>
    </message>
    <message>
        <source>Which kind of file to show</source>
        <translation>Qué clase de archivos mostrar</translation>
    </message>
    <message>
        <source>Upload</source>
        <translation>Subir</translation>
    </message>
    <message>
        <source>Add master files to Uploads</source>
        <translation>Añadir archivos máster a «Subidas»</translation>
    </message>
    <message>
        <source>Download what is selected</source>
        <translation>Descargar la selección</translation>
    </message>
    <message>
        <source>Download what is selected
to %1</source>
        <translation>Descargar la selección
en %1</translation>
    </message>
    <message>
        <source>Where downloads go</source>
        <translation>Destino de las descargas</translation>
    </message>
    <message>
        <source>Choose another folder…</source>
        <translation>Elegir otra carpeta…</translation>
    </message>
    <message>
        <source>Find in Uploads</source>
        <translation>Buscar en «Subidas»</translation>
    </message>
    <message>
        <source>Find an asset</source>
        <translation>Buscar un recurso</translation>
    </message>
    <message>
        <source>Loading</source>
        <translation>Cargando</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Reintentar</translation>
    </message>
    <message>
        <source>Could not load Assets</source>
        <translation>No se pudo cargar «Recursos»</translation>
    </message>
    <message>
        <source>Show all</source>
        <translation>Mostrar todo</translation>
    </message>
</context>
<context>
    <name>BackLink</name>
    <message>
        <source>Back to sign in</source>
        <translation>Volver al inicio de sesión</translation>
    </message>
</context>
<context>
    <name>BrowserFace</name>
    <message>
        <source>Finished there? Choose Open Palvera in the browser, or open it again.</source>
        <translation>¿Ha terminado? Elija abrir Palvera en el navegador o vuelva a abrirlo.</translation>
    </message>
    <message>
        <source>Your browser is open at the sign-in page. When it asks, choose Open Palvera.</source>
        <translation>La página de inicio de sesión está abierta en su navegador. Cuando se lo pregunte, elija abrir Palvera.</translation>
    </message>
    <message>
        <source>Finish in your browser</source>
        <translation>Termine en su navegador</translation>
    </message>
    <message>
        <source>Open the browser again</source>
        <translation>Volver a abrir el navegador</translation>
    </message>
    <message>
        <source>Copy the address</source>
        <translation>Copiar la dirección</translation>
    </message>
    <message>
        <source>The address is copied</source>
        <translation>Dirección copiada</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>CodeFace</name>
    <message>
        <source>Checking</source>
        <translation>Comprobando</translation>
    </message>
    <message>
        <source>We sent a six-digit code to %1. Enter it here to confirm the address is yours.</source>
        <translation>Hemos enviado un código de seis dígitos a %1. Introdúzcalo aquí para confirmar que la dirección es suya.</translation>
    </message>
    <message>
        <source>Enter the code from your authenticator app.</source>
        <translation>Introduzca el código de su aplicación de autenticación.</translation>
    </message>
    <message>
        <source>Check your email</source>
        <translation>Revise su correo</translation>
    </message>
    <message>
        <source>One more step</source>
        <translation>Un paso más</translation>
    </message>
    <message>
        <source>Another code is on its way.</source>
        <translation>Hay otro código en camino.</translation>
    </message>
    <message>
        <source>Nothing arrived?</source>
        <translation>¿No ha llegado nada?</translation>
    </message>
    <message>
        <source>Send another code</source>
        <translation>Enviar otro código</translation>
    </message>
    <message>
        <source>Code from the email</source>
        <translation>Código del correo</translation>
    </message>
    <message>
        <source>Code from the app</source>
        <translation>Código de la aplicación</translation>
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
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>CopyableText</name>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
</context>
<context>
    <name>CutOffCard</name>
    <message>
        <source>Locate…</source>
        <translation>Localizar…</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Reanudar</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Descartar</translation>
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
        <translation>Entregables</translation>
    </message>
    <message>
        <source>Large files go up on several connections at once, and pick up where they left off if the network drops.</source>
        <translation>Los archivos grandes se suben por varias conexiones a la vez y continúan donde se quedaron si se cae la red.</translation>
    </message>
    <message>
        <source>Drop a file here</source>
        <translation>Suelte un archivo aquí</translation>
    </message>
    <message>
        <source>Keep going</source>
        <translation>Continuar</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
</context>
<context>
    <name>DeliverablesView</name>
    <message>
        <source>Projects</source>
        <translation>Proyectos</translation>
    </message>
    <message>
        <source>Find a deliverable</source>
        <translation>Buscar un entregable</translation>
    </message>
    <message>
        <source>Clear the filters</source>
        <translation>Borrar los filtros</translation>
    </message>
    <message>
        <source>Clear the search</source>
        <translation>Borrar la búsqueda</translation>
    </message>
    <message>
        <source>Clear a filter to see more.</source>
        <translation>Borre un filtro para ver más.</translation>
    </message>
    <message>
        <source>Nothing matches</source>
        <translation>Ningún resultado</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Reintentar</translation>
    </message>
    <message>
        <source>Could not load the deliverables</source>
        <translation>No se pudieron cargar los entregables</translation>
    </message>
</context>
<context>
    <name>DropZone</name>
    <message>
        <source>Choose a file</source>
        <translation>Elegir un archivo</translation>
    </message>
</context>
<context>
    <name>EmailFace</name>
    <message>
        <source>or</source>
        <translation>o</translation>
    </message>
    <message>
        <source>Continue with %1, in a sign-in window.</source>
        <translation>Continuar con %1, en una ventana de inicio de sesión.</translation>
    </message>
    <message>
        <source>Sign in with a passkey</source>
        <translation>Iniciar sesión con una llave de acceso</translation>
    </message>
    <message>
        <source>With your security key.</source>
        <translation>Con su llave de seguridad.</translation>
    </message>
    <message>
        <source>Opens the sign-in window; use your passkey there.</source>
        <translation>En la ventana de inicio de sesión, con su llave.</translation>
    </message>
</context>
<context>
    <name>EmailField</name>
    <message>
        <source>Work email</source>
        <translation>Correo del trabajo</translation>
    </message>
    <message>
        <source>you@studio.example</source>
        <translation>usted@studio.example</translation>
    </message>
</context>
<context>
    <name>EnrolFace</name>
    <message>
        <source>Every sign-in asks for a code from an authenticator app. Scan this with Google Authenticator, 1Password or any app that makes them, then enter the code it shows.</source>
        <translation>Cada inicio de sesión pide un código de una aplicación de autenticación. Escanee esto con Google Authenticator, 1Password o cualquier otra aplicación que los genere y, a continuación, introduzca el código que muestra.</translation>
    </message>
    <message>
        <source>Add an authenticator</source>
        <translation>Añadir un autenticador</translation>
    </message>
    <message>
        <source>QR code for your authenticator app</source>
        <translation>Código QR para su aplicación de autenticación</translation>
    </message>
    <message>
        <source>Cannot scan it? Enter this key instead</source>
        <translation>¿No puede escanearlo? Use esta clave</translation>
    </message>
    <message>
        <source>Enter this key in your authenticator app</source>
        <translation>Clave para su aplicación de autenticación</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Clave</translation>
    </message>
    <message>
        <source>Code from the app</source>
        <translation>Código de la aplicación</translation>
    </message>
</context>
<context>
    <name>FailureCard</name>
    <message>
        <source>Locate…</source>
        <translation>Localizar…</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Reintentar</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Descartar</translation>
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
        <translation>Elegir un archivo para enviar</translation>
    </message>
    <message>
        <source>Choose where downloads go</source>
        <translation>Elegir el destino de las descargas</translation>
    </message>
</context>
<context>
    <name>FiledCard</name>
    <message>
        <source>Filed against this deliverable</source>
        <translation>Registrado para este entregable</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Descargar</translation>
    </message>
    <message>
        <source>Drop a file to replace this</source>
        <translation>Suelte un archivo para reemplazar este</translation>
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
        <translation>Elegir archivos para añadir a «Subidas»</translation>
    </message>
    <message>
        <source>Choose where downloads go</source>
        <translation>Elegir el destino de las descargas</translation>
    </message>
</context>
<context>
    <name>FilterBar</name>
    <message>
        <source>Family</source>
        <translation>Familia</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Estado</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Idioma</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Archivos</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Borrar</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>Orden</translation>
    </message>
    <message>
        <source>Clear the filters</source>
        <translation>Quitar los filtros</translation>
    </message>
</context>
<context>
    <name>ForgotFace</name>
    <message>
        <source>Send me a link</source>
        <translation>Enviarme un enlace</translation>
    </message>
    <message>
        <source>Sending</source>
        <translation>Enviando</translation>
    </message>
    <message>
        <source>If %1 has an account, a link is on its way. It works once and expires in an hour.</source>
        <translation>Si %1 tiene una cuenta, hay un enlace en camino. Funciona una sola vez y caduca en una hora.</translation>
    </message>
    <message>
        <source>Give us the email address on your account and we will send a link to set a new one.</source>
        <translation>Indique el correo electrónico de su cuenta y le enviaremos un enlace para establecer una nueva.</translation>
    </message>
    <message>
        <source>Forgotten your password?</source>
        <translation>¿Ha olvidado su contraseña?</translation>
    </message>
    <message>
        <source>Nothing has changed yet. Following the link sets a new password and signs you out everywhere else.</source>
        <translation>Aún no ha cambiado nada. Con el enlace establecerá una nueva contraseña y se cerrará su sesión en los demás lugares.</translation>
    </message>
</context>
<context>
    <name>GoneCard</name>
    <message>
        <source>The platform no longer has this deliverable</source>
        <translation>La plataforma ya no tiene este entregable</translation>
    </message>
    <message>
        <source>Nothing can be sent to it. If it comes back, it takes files again.</source>
        <translation>No se le puede enviar nada. Si vuelve, aceptará archivos de nuevo.</translation>
    </message>
</context>
<context>
    <name>HelpSheet</name>
    <message>
        <source>Sending a master</source>
        <translation>Enviar un máster</translation>
    </message>
    <message>
        <source>Open the client, the project and the deliverable, and drop the file there, or choose it with the button. A file may also be dropped on a row of the list. It goes up over several connections, is checked by the platform, and is filed: only then is it called done.</source>
        <translation>Abra el cliente, el proyecto y el entregable, y suelte allí el archivo o elíjalo con el botón. También puede soltar un archivo en una fila de la lista. Se sube por varias conexiones, la plataforma lo comprueba y lo registra: solo entonces se da por listo.</translation>
    </message>
    <message>
        <source>When something comes between</source>
        <translation>Cuando surge un imprevisto</translation>
    </message>
    <message>
        <source>A lost network, a restart of the platform or sleep are waited out, and the upload goes on by itself. If the program ends first, the upload waits under Interrupted in the transfers, and goes on from the part that it had reached. The file must not change meanwhile; if it was moved, use Locate.</source>
        <translation>Si se pierde la red, se reinicia la plataforma o el equipo se suspende, se espera y la subida continúa sola. Si el programa termina antes, la subida espera en «Interrumpidas», en las transferencias, y continúa desde la parte alcanzada. El archivo no debe cambiar entretanto; si se ha movido, use «Localizar».</translation>
    </message>
    <message>
        <source>The transfers</source>
        <translation>Las transferencias</translation>
    </message>
    <message>
        <source>Downloads</source>
        <translation>Descargas</translation>
    </message>
    <message>
        <source>A file comes down into the downloads folder, which the first download asks for. A file that is there is never replaced: the new one gets a number. A download that was cut off waits under Interrupted, too.</source>
        <translation>Un archivo se descarga en la carpeta de descargas, que se pregunta en la primera descarga. Un archivo que ya está nunca se reemplaza: el nuevo recibe un número. Una descarga interrumpida también espera en «Interrumpidas».</translation>
    </message>
    <message>
        <source>Sharing the line</source>
        <translation>Compartir la línea</translation>
    </message>
    <message>
        <source>Under Settings the transfers can be kept to so many MB/s, all day long or between certain hours. It holds at once, for what is moving, too.</source>
        <translation>En «Ajustes» puede limitar las transferencias a una cantidad de MB/s, todo el día o a ciertas horas. Se aplica de inmediato, también a lo que está en curso.</translation>
    </message>
    <message>
        <source>Signing in</source>
        <translation>Iniciar sesión</translation>
    </message>
    <message>
        <source>With an e-mail address and a password, in the browser, or with a passkey of a security key. When a sign-in expires, transfers wait until you have signed in again.</source>
        <translation>Con correo y contraseña, en el navegador o con una llave de acceso en una llave de seguridad. Cuando caduca una sesión, las transferencias esperan hasta que vuelva a iniciarla.</translation>
    </message>
    <message>
        <source>When you need help</source>
        <translation>Si necesita ayuda</translation>
    </message>
    <message>
        <source>The log of the transfers says what was sent when, and how fast. Errors can be copied from the menu of a row: the platform&apos;s support will ask for them.</source>
        <translation>El registro de las transferencias indica qué se envió, cuándo y a qué velocidad. Los errores se pueden copiar desde el menú de una fila: el soporte de la plataforma los pedirá.</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Ayuda</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>The panel shows what moves, what is over and what was cut off. As many run at once as the settings say, in the order of the list; drag a row or use Ctrl and the arrows to change it. What is paused keeps its place and what has arrived. What is stopped is given up.</source>
        <translation>El panel muestra lo que está en curso, lo que ha finalizado y lo que se interrumpió. Se transfieren a la vez tantos como digan los ajustes, en el orden de la lista; arrastre una fila o use Ctrl y las flechas para cambiarlo. Lo que está en pausa conserva su lugar y lo que ya ha llegado. Lo que se detiene se abandona.</translation>
    </message>
</context>
<context>
    <name>InFlightCard</name>
    <message>
        <source>Resume</source>
        <translation>Reanudar</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Completado</translation>
    </message>
    <message>
        <source>Transferred</source>
        <translation>Transferido</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>Velocidad</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Restante</translation>
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
        <translation>La actualización no está firmada por Palvera.</translation>
    </message>
    <message>
        <source>The update is damaged.</source>
        <translation>La actualización está dañada.</translation>
    </message>
    <message>
        <source>The update is incomplete.</source>
        <translation>La actualización está incompleta.</translation>
    </message>
    <message>
        <source>The update is older than the copy on this computer.</source>
        <translation>La actualización es más antigua que la copia de este equipo.</translation>
    </message>
    <message>
        <source>The update is not the one that was announced.</source>
        <translation>La actualización no es la que se anunció.</translation>
    </message>
    <message>
        <source>The update is for another kind of computer.</source>
        <translation>La actualización es para otro tipo de equipo.</translation>
    </message>
    <message>
        <source>The update holds something that does not belong there.</source>
        <translation>La actualización contiene algo que no debería.</translation>
    </message>
    <message>
        <source>The update does not run on this computer.</source>
        <translation>La actualización no funciona en este equipo.</translation>
    </message>
    <message>
        <source>Another update is under way on this computer. Try again in a minute.</source>
        <translation>Hay otra actualización en curso en este equipo. Inténtelo de nuevo en un minuto.</translation>
    </message>
    <message>
        <source>The update could not be read in time.</source>
        <translation>No se pudo leer la actualización a tiempo.</translation>
    </message>
    <message>
        <source>The update could not be unpacked.</source>
        <translation>No se pudo descomprimir la actualización.</translation>
    </message>
    <message>
        <source>You may not install updates on this computer. Ask whoever looks after it.</source>
        <translation>No puede instalar actualizaciones en este equipo. Consulte a quien lo administra.</translation>
    </message>
    <message>
        <source>Nobody could be asked whether updates may be installed on this computer.</source>
        <translation>No se pudo preguntar a nadie si pueden instalarse actualizaciones en este equipo.</translation>
    </message>
    <message>
        <source>This copy of Palvera is not looked after by the installer.</source>
        <translation>El instalador no se ocupa de esta copia de Palvera.</translation>
    </message>
    <message>
        <source>The installer is missing from this copy of the app.</source>
        <translation>Falta el instalador en esta copia de la aplicación.</translation>
    </message>
    <message>
        <source>There is no prepared update.</source>
        <translation>No hay ninguna actualización preparada.</translation>
    </message>
</context>
<context>
    <name>InterruptedDialogs</name>
    <message>
        <source>Keep</source>
        <translation>Conservar</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Descartar</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>Continuar</translation>
    </message>
    <message>
        <source>Is this the same file?</source>
        <translation>¿Es el mismo archivo?</translation>
    </message>
    <message>
        <source>Send it from the start</source>
        <translation>Enviarlo desde el principio</translation>
    </message>
    <message>
        <source>That is another file</source>
        <translation>Es otro archivo</translation>
    </message>
    <message>
        <source>That did not work</source>
        <translation>No ha funcionado</translation>
    </message>
</context>
<context>
    <name>InterruptedLine</name>
    <message>
        <source>Resume all</source>
        <translation>Reanudar todo</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Mostrar</translation>
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
        <translation>Localizar…</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Reanudar</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Descartar</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
    </message>
</context>
<context>
    <name>Language</name>
    <message>
        <source>Arabic</source>
        <translation>Árabe</translation>
    </message>
    <message>
        <source>Basque</source>
        <translation>Euskera</translation>
    </message>
    <message>
        <source>Bengali</source>
        <translation>Bengalí</translation>
    </message>
    <message>
        <source>Bulgarian</source>
        <translation>Búlgaro</translation>
    </message>
    <message>
        <source>Cantonese</source>
        <translation>Cantonés</translation>
    </message>
    <message>
        <source>Catalan</source>
        <translation>Catalán</translation>
    </message>
    <message>
        <source>Chinese</source>
        <translation>Chino</translation>
    </message>
    <message>
        <source>Croatian</source>
        <translation>Croata</translation>
    </message>
    <message>
        <source>Czech</source>
        <translation>Checo</translation>
    </message>
    <message>
        <source>Danish</source>
        <translation>Danés</translation>
    </message>
    <message>
        <source>Dutch</source>
        <translation>Neerlandés</translation>
    </message>
    <message>
        <source>English</source>
        <translation>Inglés</translation>
    </message>
    <message>
        <source>Estonian</source>
        <translation>Estonio</translation>
    </message>
    <message>
        <source>Filipino</source>
        <translation>Filipino</translation>
    </message>
    <message>
        <source>Finnish</source>
        <translation>Finés</translation>
    </message>
    <message>
        <source>French</source>
        <translation>Francés</translation>
    </message>
    <message>
        <source>Galician</source>
        <translation>Gallego</translation>
    </message>
    <message>
        <source>German</source>
        <translation>Alemán</translation>
    </message>
    <message>
        <source>Greek</source>
        <translation>Griego</translation>
    </message>
    <message>
        <source>Hebrew</source>
        <translation>Hebreo</translation>
    </message>
    <message>
        <source>Hindi</source>
        <translation>Hindi</translation>
    </message>
    <message>
        <source>Hungarian</source>
        <translation>Húngaro</translation>
    </message>
    <message>
        <source>Icelandic</source>
        <translation>Islandés</translation>
    </message>
    <message>
        <source>Indonesian</source>
        <translation>Indonesio</translation>
    </message>
    <message>
        <source>Irish</source>
        <translation>Irlandés</translation>
    </message>
    <message>
        <source>Italian</source>
        <translation>Italiano</translation>
    </message>
    <message>
        <source>Japanese</source>
        <translation>Japonés</translation>
    </message>
    <message>
        <source>Korean</source>
        <translation>Coreano</translation>
    </message>
    <message>
        <source>Latvian</source>
        <translation>Letón</translation>
    </message>
    <message>
        <source>Lithuanian</source>
        <translation>Lituano</translation>
    </message>
    <message>
        <source>Malay</source>
        <translation>Malayo</translation>
    </message>
    <message>
        <source>Norwegian Bokmal</source>
        <translation>Noruego (bokmål)</translation>
    </message>
    <message>
        <source>Persian</source>
        <translation>Persa</translation>
    </message>
    <message>
        <source>Polish</source>
        <translation>Polaco</translation>
    </message>
    <message>
        <source>Portuguese</source>
        <translation>Portugués</translation>
    </message>
    <message>
        <source>Romanian</source>
        <translation>Rumano</translation>
    </message>
    <message>
        <source>Russian</source>
        <translation>Ruso</translation>
    </message>
    <message>
        <source>Serbian</source>
        <translation>Serbio</translation>
    </message>
    <message>
        <source>Slovak</source>
        <translation>Eslovaco</translation>
    </message>
    <message>
        <source>Slovenian</source>
        <translation>Esloveno</translation>
    </message>
    <message>
        <source>Spanish</source>
        <translation>Español</translation>
    </message>
    <message>
        <source>Swedish</source>
        <translation>Sueco</translation>
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
        <translation>Tailandés</translation>
    </message>
    <message>
        <source>Turkish</source>
        <translation>Turco</translation>
    </message>
    <message>
        <source>Ukrainian</source>
        <translation>Ucraniano</translation>
    </message>
    <message>
        <source>Urdu</source>
        <translation>Urdu</translation>
    </message>
    <message>
        <source>Vietnamese</source>
        <translation>Vietnamita</translation>
    </message>
    <message>
        <source>Welsh</source>
        <translation>Galés</translation>
    </message>
</context>
<context>
    <name>ListRow</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
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
        <translation>Esperando la respuesta de Palvera…</translation>
    </message>
</context>
<context>
    <name>LocatePanel</name>
    <message>
        <source>Where is the file?</source>
        <translation>¿Dónde está el archivo?</translation>
    </message>
</context>
<context>
    <name>LoginView</name>
    <message>
        <source>Back to sign in</source>
        <translation>Volver al inicio de sesión</translation>
    </message>
    <message>
        <source>Sign in with an access code</source>
        <translation>Iniciar sesión con un código de acceso</translation>
    </message>
    <message>
        <source>About Palvera</source>
        <translation>Acerca de Palvera</translation>
    </message>
    <message>
        <source>Secured by WorkOS</source>
        <translation>Protegido por WorkOS</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Keep going</source>
        <translation>Continuar</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>They wait under Interrupted and go on from where they were.</source>
        <translation>Esperan en «Interrumpidas» y continúan donde estaban.</translation>
    </message>
    <message>
        <source>Quit while files are moving?</source>
        <translation>¿Salir mientras se transfieren archivos?</translation>
    </message>
</context>
<context>
    <name>MenuButton</name>
    <message>
        <source>Menu</source>
        <translation>Menú</translation>
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
        <translation>Descartar</translation>
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
        <translation>Elegir un cliente</translation>
    </message>
    <message>
        <source>Loading your clients…</source>
        <translation>Cargando sus clientes…</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Reintentar</translation>
    </message>
    <message>
        <source>Nobody has shared work with you yet.</source>
        <translation>Nadie ha compartido trabajos con usted todavía.</translation>
    </message>
    <message>
        <source>Could not load your clients</source>
        <translation>No se pudieron cargar sus clientes</translation>
    </message>
    <message>
        <source>No clients</source>
        <translation>Ningún cliente</translation>
    </message>
</context>
<context>
    <name>PasskeyFace</name>
    <message>
        <source>Sign in with a passkey</source>
        <translation>Iniciar sesión con una llave de acceso</translation>
    </message>
    <message>
        <source>PIN</source>
        <translation>PIN</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuar</translation>
    </message>
    <message>
        <source>Use the browser instead</source>
        <translation>Usar el navegador</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>PasswordFace</name>
    <message>
        <source>Forgotten your password?</source>
        <translation>¿Ha olvidado su contraseña?</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Cambiar</translation>
    </message>
</context>
<context>
    <name>PasswordField</name>
    <message>
        <source>Password</source>
        <translation>Contraseña</translation>
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
        <translation>%1 de %2</translation>
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
        <translation>Ajustes…</translation>
    </message>
    <message>
        <source>Ctrl+?</source>
        <translation>Ctrl+?</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>Atajos de teclado</translation>
    </message>
    <message>
        <source>Open log</source>
        <translation>Abrir el registro</translation>
    </message>
    <message>
        <source>F1</source>
        <translation>F1</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Ayuda</translation>
    </message>
    <message>
        <source>About Palvera</source>
        <translation>Acerca de Palvera</translation>
    </message>
    <message>
        <source>Ctrl+U</source>
        <translation>Ctrl+U</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Actualizaciones…</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menú</translation>
    </message>
</context>
<context>
    <name>ProgressLine</name>
    <message>
        <source>%1, %2 percent</source>
        <translation>%1, %2 por ciento</translation>
    </message>
</context>
<context>
    <name>ProjectsPage</name>
    <message>
        <source>Choose another client</source>
        <translation>Elegir otro cliente</translation>
    </message>
</context>
<context>
    <name>ProjectsView</name>
    <message>
        <source>Clients</source>
        <translation>Clientes</translation>
    </message>
    <message>
        <source>Projects</source>
        <translation>Proyectos</translation>
    </message>
    <message>
        <source>Find a project</source>
        <translation>Buscar un proyecto</translation>
    </message>
    <message>
        <source>Loading the projects</source>
        <translation>Cargando los proyectos</translation>
    </message>
    <message>
        <source>Nothing has been shared with you in this client yet.</source>
        <translation>Aún no se ha compartido nada con usted en este cliente.</translation>
    </message>
    <message>
        <source>No projects</source>
        <translation>Ningún proyecto</translation>
    </message>
    <message>
        <source>Clear the search</source>
        <translation>Borrar la búsqueda</translation>
    </message>
    <message>
        <source>Nothing matches</source>
        <translation>Ningún resultado</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Reintentar</translation>
    </message>
    <message>
        <source>Could not load your projects</source>
        <translation>No se pudieron cargar sus proyectos</translation>
    </message>
    <message>
        <source>Assets</source>
        <translation>Recursos</translation>
    </message>
    <message>
        <source>Master assets, for any project</source>
        <translation>Recursos máster, para cualquier proyecto</translation>
    </message>
    <message>
        <source>Projects of %1</source>
        <translation>Proyectos de %1</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>Orden</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Put in your security key.</source>
        <translation>Inserte su llave de seguridad.</translation>
    </message>
    <message>
        <source>Touch the security key that you want to use.</source>
        <translation>Toque la llave de seguridad que quiere usar.</translation>
    </message>
    <message>
        <source>Enter your security key&apos;s PIN.</source>
        <translation>Introduzca el PIN de su llave de seguridad.</translation>
    </message>
    <message>
        <source>Touch your security key.</source>
        <translation>Toque su llave de seguridad.</translation>
    </message>
    <message>
        <source>Which account?</source>
        <translation>¿Qué cuenta?</translation>
    </message>
    <message>
        <source>One try left. After that the security key locks.</source>
        <translation>Queda un intento. Después, la llave de seguridad se bloquea.</translation>
    </message>
    <message>
        <source>That PIN is not right.</source>
        <translation>Ese PIN no es correcto.</translation>
    </message>
    <message>
        <source>Account %1</source>
        <translation>Cuenta %1</translation>
    </message>
    <message>
        <source>Transfers finished</source>
        <translation>Transferencias finalizadas</translation>
    </message>
    <message>
        <source>“%1” is done.</source>
        <translation>«%1» está listo.</translation>
    </message>
    <message numerus="yes">
        <source>%n files are done.</source>
        <translation>
            <numerusform>%n archivo está listo.</numerusform>
            <numerusform>%n archivos están listos.</numerusform>
        </translation>
    </message>
    <message>
        <source>Transfers failed</source>
        <translation>Transferencias fallidas</translation>
    </message>
    <message>
        <source>“%1” could not be transferred.</source>
        <translation>No se pudo transferir «%1».</translation>
    </message>
    <message numerus="yes">
        <source>%n files could not be transferred.</source>
        <translation>
            <numerusform>No se pudo transferir %n archivo.</numerusform>
            <numerusform>No se pudieron transferir %n archivos.</numerusform>
        </translation>
    </message>
    <message>
        <source>Transfers finished, some failed</source>
        <translation>Transferencias finalizadas, algunas con errores</translation>
    </message>
    <message>
        <source>Done: %1. Could not be transferred: %2.</source>
        <translation>Listas: %1. No transferidas: %2.</translation>
    </message>
    <message>
        <source>Transfers are cut off such that they can go on.</source>
        <translation>Las transferencias se interrumpen de modo que puedan continuar.</translation>
    </message>
    <message>
        <source>The system gives the program no more threads.</source>
        <translation>El sistema no concede más hilos al programa.</translation>
    </message>
    <message>
        <source>The system lets the program open no more files.</source>
        <translation>El sistema no permite al programa abrir más archivos.</translation>
    </message>
    <message>
        <source>There is not enough memory.</source>
        <translation>No hay memoria suficiente.</translation>
    </message>
    <message>
        <source>It did not work, and nobody said why.</source>
        <translation>No ha funcionado por un motivo desconocido.</translation>
    </message>
    <message>
        <source>The download is gone.</source>
        <translation>La descarga ya no está.</translation>
    </message>
    <message>
        <source>This security key holds no passkey for Palvera.</source>
        <translation>Esta llave de seguridad no contiene ninguna llave de acceso para Palvera.</translation>
    </message>
    <message>
        <source>This security key has no PIN yet. Set one in your browser&apos;s settings.</source>
        <translation>Esta llave de seguridad aún no tiene PIN. Establezca uno en los ajustes de su navegador.</translation>
    </message>
    <message>
        <source>This security key is locked: its PIN was wrong too often.</source>
        <translation>Esta llave de seguridad está bloqueada: el PIN fue incorrecto demasiadas veces.</translation>
    </message>
    <message>
        <source>Too many wrong PINs. Take the security key out and put it in again.</source>
        <translation>Demasiados PIN incorrectos. Retire la llave de seguridad y vuelva a insertarla.</translation>
    </message>
    <message>
        <source>This security key was not touched in time. Try again.</source>
        <translation>No se tocó esta llave de seguridad a tiempo. Inténtelo de nuevo.</translation>
    </message>
    <message>
        <source>This security key was taken out. Put it in and try again.</source>
        <translation>Se ha retirado esta llave de seguridad. Insértela e inténtelo de nuevo.</translation>
    </message>
    <message>
        <source>This security key did not answer (%1).</source>
        <translation>Esta llave de seguridad no respondió (%1).</translation>
    </message>
    <message>
        <source>The new build could not be started: %1</source>
        <translation>No se pudo iniciar la nueva compilación: %1</translation>
    </message>
    <message>
        <source>The new build did not start.</source>
        <translation>La nueva compilación no se inició.</translation>
    </message>
    <message>
        <source>“%1” cannot be written: %2.</source>
        <translation>No se puede escribir «%1»: %2.</translation>
    </message>
    <message>
        <source>There is not enough memory to hold %1 MB at a time.</source>
        <translation>No hay memoria suficiente para %1 MB a la vez.</translation>
    </message>
    <message>
        <source>“%1” cannot be opened: %2.</source>
        <translation>No se puede abrir «%1»: %2.</translation>
    </message>
    <message>
        <source>“%1” has another name in some folder, so it is not written.</source>
        <translation>«%1» tiene otro nombre en alguna carpeta, así que no se escribe.</translation>
    </message>
    <message>
        <source>“%1” is being downloaded already.</source>
        <translation>«%1» ya se está descargando.</translation>
    </message>
    <message>
        <source>“%1” cannot be created: %2.</source>
        <translation>No se puede crear «%1»: %2.</translation>
    </message>
    <message>
        <source>“%1” cannot be read: %2.</source>
        <translation>No se puede leer «%1»: %2.</translation>
    </message>
    <message>
        <source>There is not enough room for “%1”: it needs %2, and %3 is free.</source>
        <translation>No hay espacio suficiente para «%1»: necesita %2 y hay %3 libres.</translation>
    </message>
    <message>
        <source>“%1” was moved or removed while it was being downloaded.</source>
        <translation>«%1» se movió o se eliminó mientras se descargaba.</translation>
    </message>
    <message>
        <source>“%1” cannot be made: %2.</source>
        <translation>No se puede crear «%1»: %2.</translation>
    </message>
    <message>
        <source>“%1” cannot be locked: %2.</source>
        <translation>No se puede bloquear «%1»: %2.</translation>
    </message>
    <message>
        <source>That counts only for now: %1 cannot be written.</source>
        <translation>Solo vale por ahora: no se puede escribir %1.</translation>
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
        <translation>No se pudo eliminar la sesión guardada en %1.</translation>
    </message>
    <message>
        <source>The platform&apos;s sign-in ends with the program.</source>
        <translation>La sesión en la plataforma termina con el programa.</translation>
    </message>
    <message>
        <source>The sign-in that is kept in %1 cannot be read.</source>
        <translation>No se puede leer la sesión guardada en %1.</translation>
    </message>
    <message>
        <source>The server&apos;s name was not found.</source>
        <translation>No se encontró el nombre del servidor.</translation>
    </message>
    <message>
        <source>The proxy&apos;s name was not found.</source>
        <translation>No se encontró el nombre del proxy.</translation>
    </message>
    <message>
        <source>Could not connect to the server.</source>
        <translation>No se pudo conectar con el servidor.</translation>
    </message>
    <message>
        <source>The proxy made no connection.</source>
        <translation>El proxy no estableció ninguna conexión.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate is not trusted.</source>
        <translation>El certificado del servidor no es de confianza.</translation>
    </message>
    <message>
        <source>No encrypted connection to the server could be made.</source>
        <translation>No se pudo establecer una conexión cifrada con el servidor.</translation>
    </message>
    <message>
        <source>The trusted certificates could not be read.</source>
        <translation>No se pudieron leer los certificados de confianza.</translation>
    </message>
    <message>
        <source>The server did not answer.</source>
        <translation>El servidor no respondió.</translation>
    </message>
    <message>
        <source>The server&apos;s answer was not understood.</source>
        <translation>No se entendió la respuesta del servidor.</translation>
    </message>
    <message>
        <source>There is not enough memory for the request.</source>
        <translation>No hay memoria suficiente para la solicitud.</translation>
    </message>
    <message>
        <source>The connection was lost.</source>
        <translation>Se perdió la conexión.</translation>
    </message>
    <message>
        <source>The proxy asks for a name and a password.</source>
        <translation>El proxy pide un nombre y una contraseña.</translation>
    </message>
    <message>
        <source>The proxy could not reach the server.</source>
        <translation>El proxy no pudo conectar con el servidor.</translation>
    </message>
    <message>
        <source>The proxy refused the connection.</source>
        <translation>El proxy rechazó la conexión.</translation>
    </message>
    <message>
        <source>No answer within %1 seconds.</source>
        <translation>Sin respuesta en %1 segundos.</translation>
    </message>
    <message>
        <source>The request took longer than %1 seconds.</source>
        <translation>La solicitud tardó más de %1 segundos.</translation>
    </message>
    <message>
        <source>Too many files are open.</source>
        <translation>Hay demasiados archivos abiertos.</translation>
    </message>
    <message>
        <source>The server&apos;s answer is too large.</source>
        <translation>La respuesta del servidor es demasiado grande.</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>No hay conexión de red.</translation>
    </message>
    <message>
        <source>The address is not valid.</source>
        <translation>La dirección no es válida.</translation>
    </message>
    <message>
        <source>The server sends on to an address that is not encrypted.</source>
        <translation>El servidor redirige a una dirección sin cifrar.</translation>
    </message>
    <message>
        <source>The server sends on again and again.</source>
        <translation>El servidor redirige una y otra vez.</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Archivo</translation>
    </message>
    <message>
        <source>The platform does not say where this file is stored.</source>
        <translation>La plataforma no indica dónde está almacenado este archivo.</translation>
    </message>
    <message>
        <source>The platform does not say on which deliverable this file is.</source>
        <translation>La plataforma no indica a qué entregable pertenece este archivo.</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Listo</translation>
    </message>
    <message>
        <source>Uploads</source>
        <translation>Subidas</translation>
    </message>
    <message>
        <source>Masters added before a deal exists</source>
        <translation>Másteres añadidos antes de que haya un acuerdo</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Carpeta</translation>
    </message>
    <message>
        <source>A file without a name</source>
        <translation>Un archivo sin nombre</translation>
    </message>
    <message>
        <source>Today %1</source>
        <translation>Hoy %1</translation>
    </message>
    <message>
        <source>Yesterday %1</source>
        <translation>Ayer %1</translation>
    </message>
    <message>
        <source>Nothing in Uploads yet</source>
        <translation>Aún no hay nada en «Subidas»</translation>
    </message>
    <message>
        <source>Drop master files here, or choose Upload. They can be added to projects later.</source>
        <translation>Suelte aquí archivos máster o elija «Subir». Más adelante podrán añadirse a proyectos.</translation>
    </message>
    <message>
        <source>Nothing matches</source>
        <translation>Ningún resultado</translation>
    </message>
    <message>
        <source>Try another word, or clear the search.</source>
        <translation>Pruebe con otra palabra o borre la búsqueda.</translation>
    </message>
    <message>
        <source>Nothing delivered yet</source>
        <translation>Aún no se ha entregado nada</translation>
    </message>
    <message>
        <source>Files delivered on the organisation&apos;s projects appear here. Masters added before a deal exists live under Uploads.</source>
        <translation>Aquí aparecen los archivos entregados en los proyectos de la organización. Los másteres añadidos antes de que haya un acuerdo están en «Subidas».</translation>
    </message>
    <message>
        <source>Try another word or kind, or clear the search.</source>
        <translation>Pruebe con otra palabra u otra clase, o borre la búsqueda.</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Descargar</translation>
    </message>
    <message numerus="yes">
        <source>Download %n files</source>
        <translation>
            <numerusform>Descargar %n archivo</numerusform>
            <numerusform>Descargar %n archivos</numerusform>
        </translation>
    </message>
    <message>
        <source>Drop to add to %1</source>
        <translation>Suelte para añadir a «%1»</translation>
    </message>
    <message>
        <source>1 folder was left out: only files can be added. %1</source>
        <translation>Se ha omitido 1 carpeta: solo se pueden añadir archivos. %1</translation>
    </message>
    <message numerus="yes">
        <source>%n folders were left out: only files can be added. %1</source>
        <translation>
            <numerusform>Se ha omitido %n carpeta: solo se pueden añadir archivos. %1</numerusform>
            <numerusform>Se han omitido %n carpetas: solo se pueden añadir archivos. %1</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 is on its way already.</source>
        <translation>%1 ya está en camino.</translation>
    </message>
    <message numerus="yes">
        <source>%n files are on their way already. %1</source>
        <translation>
            <numerusform>%n archivo ya está en camino. %1</numerusform>
            <numerusform>%n archivos ya están en camino. %1</numerusform>
        </translation>
    </message>
    <message>
        <source>The platform no longer has “%1”. Nothing was sent.</source>
        <translation>La plataforma ya no tiene «%1». No se ha enviado nada.</translation>
    </message>
    <message>
        <source>Filled</source>
        <translation>Con archivo</translation>
    </message>
    <message>
        <source>Empty</source>
        <translation>Sin archivo</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Todos</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>En espera</translation>
    </message>
    <message>
        <source>Paused</source>
        <translation>En pausa</translation>
    </message>
    <message>
        <source>Transferring</source>
        <translation>Transfiriendo</translation>
    </message>
    <message>
        <source>The delivered file</source>
        <translation>El archivo entregado</translation>
    </message>
    <message>
        <source>“%1” is a folder. Drop the file itself.</source>
        <translation>«%1» es una carpeta. Suelte el archivo mismo.</translation>
    </message>
    <message>
        <source>%1 Left out: %2.</source>
        <translation>%1 Se omite: %2.</translation>
    </message>
    <message>
        <source>about %1</source>
        <translation>hacia las %1</translation>
    </message>
    <message>
        <source>about %1 tomorrow</source>
        <translation>mañana hacia las %1</translation>
    </message>
    <message>
        <source>about %1 on %2</source>
        <translation>el %2 hacia las %1</translation>
    </message>
    <message>
        <source>more than %1 left</source>
        <translation>quedan más de %1</translation>
    </message>
    <message>
        <source>%1 left</source>
        <translation>quedan %1</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
    </message>
    <message>
        <source>%1 downloaded</source>
        <translation>%1 descargados</translation>
    </message>
    <message>
        <source>Not begun</source>
        <translation>Sin empezar</translation>
    </message>
    <message>
        <source>The file is not where it was.</source>
        <translation>El archivo no está donde estaba.</translation>
    </message>
    <message>
        <source>1 upload was cut off.</source>
        <translation>Se interrumpió 1 subida.</translation>
    </message>
    <message numerus="yes">
        <source>%n uploads were cut off.</source>
        <translation>
            <numerusform>Se interrumpió %n subida.</numerusform>
            <numerusform>Se interrumpieron %n subidas.</numerusform>
        </translation>
    </message>
    <message>
        <source>1 download was cut off.</source>
        <translation>Se interrumpió 1 descarga.</translation>
    </message>
    <message numerus="yes">
        <source>%n downloads were cut off.</source>
        <translation>
            <numerusform>Se interrumpió %n descarga.</numerusform>
            <numerusform>Se interrumpieron %n descargas.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 and %2 were cut off.</source>
        <translation>Se interrumpieron %1 y %2.</translation>
    </message>
    <message>
        <source>1 upload</source>
        <translation>1 subida</translation>
    </message>
    <message numerus="yes">
        <source>%n uploads</source>
        <translation>
            <numerusform>%n subida</numerusform>
            <numerusform>%n subidas</numerusform>
        </translation>
    </message>
    <message>
        <source>1 download</source>
        <translation>1 descarga</translation>
    </message>
    <message numerus="yes">
        <source>%n downloads</source>
        <translation>
            <numerusform>%n descarga</numerusform>
            <numerusform>%n descargas</numerusform>
        </translation>
    </message>
    <message>
        <source>Start now</source>
        <translation>Iniciar ahora</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Reanudar</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Reintentar</translation>
    </message>
    <message>
        <source>Stop…</source>
        <translation>Detener…</translation>
    </message>
    <message>
        <source>Show in folder</source>
        <translation>Mostrar en la carpeta</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Abrir</translation>
    </message>
    <message>
        <source>Show deliverable</source>
        <translation>Mostrar el entregable</translation>
    </message>
    <message>
        <source>Copy error</source>
        <translation>Copiar el error</translation>
    </message>
    <message>
        <source>Copy name</source>
        <translation>Copiar el nombre</translation>
    </message>
    <message>
        <source>Remove from list</source>
        <translation>Quitar de la lista</translation>
    </message>
    <message>
        <source>Done · %1</source>
        <translation>Listo · %1</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>Detenida</translation>
    </message>
    <message>
        <source>upload</source>
        <translation>subida</translation>
    </message>
    <message>
        <source>download</source>
        <translation>descarga</translation>
    </message>
    <message>
        <source>%1 percent</source>
        <translation>%1 por ciento</translation>
    </message>
    <message>
        <source>This computer is not connected to a network.</source>
        <translation>Este equipo no está conectado a ninguna red.</translation>
    </message>
    <message>
        <source>The platform cannot be reached.</source>
        <translation>No se puede acceder a la plataforma.</translation>
    </message>
    <message>
        <source>The connection has come to a standstill.</source>
        <translation>La conexión se ha detenido.</translation>
    </message>
    <message>
        <source>%1, size not known yet</source>
        <translation>%1, tamaño aún desconocido</translation>
    </message>
    <message>
        <source>Size not known yet</source>
        <translation>Tamaño aún desconocido</translation>
    </message>
    <message>
        <source>The platform is busy.</source>
        <translation>La plataforma está ocupada.</translation>
    </message>
    <message>
        <source>Uploading</source>
        <translation>Subiendo</translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation>Descargando</translation>
    </message>
    <message>
        <source>%1 Trying again in %2</source>
        <translation>%1 Nuevo intento en %2</translation>
    </message>
    <message>
        <source>Stop this upload?</source>
        <translation>¿Detener esta subida?</translation>
    </message>
    <message>
        <source>Stop this download?</source>
        <translation>¿Detener esta descarga?</translation>
    </message>
    <message>
        <source>%1 has come down already. It is kept on disk.</source>
        <translation>Ya se han descargado %1. Se conservan en el disco.</translation>
    </message>
    <message>
        <source>%1 has gone up already. Stopping throws it away, so nothing half delivered is left in storage.</source>
        <translation>Ya se han subido %1. Al detenerla se desechan, para que no quede nada a medio entregar en el almacenamiento.</translation>
    </message>
    <message>
        <source>%1 of %2 parts done</source>
        <translation>%1 de %2 partes listas</translation>
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
        <translation>Vídeo</translation>
    </message>
    <message>
        <source>Audio</source>
        <translation>Audio</translation>
    </message>
    <message>
        <source>Subtitles</source>
        <translation>Subtítulos</translation>
    </message>
    <message>
        <source>Artwork</source>
        <translation>Material gráfico</translation>
    </message>
    <message>
        <source>Documents</source>
        <translation>Documentos</translation>
    </message>
    <message>
        <source>Metadata</source>
        <translation>Metadatos</translation>
    </message>
    <message>
        <source>Textless</source>
        <translation>Textless</translation>
    </message>
    <message>
        <source>“%1”</source>
        <translation>«%1»</translation>
    </message>
    <message numerus="yes">
        <source>%n more</source>
        <translation>
            <numerusform>%n más</numerusform>
            <numerusform>%n más</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1 y %2</translation>
    </message>
    <message>
        <source>PV_API is ignored: “%1” is not an address that begins with http:// or https://.</source>
        <translation>Se ignora PV_API: «%1» no es una dirección que empiece por http:// o https://.</translation>
    </message>
    <message>
        <source>The platform&apos;s address for storage is not encrypted, so it was not used.</source>
        <translation>La dirección de almacenamiento de la plataforma no está cifrada, por lo que no se ha usado.</translation>
    </message>
    <message>
        <source>That was not an answer of the platform. A proxy or a sign-in page of the network may stand in between.</source>
        <translation>Esa no era una respuesta de la plataforma. Puede que haya un proxy o una página de acceso de la red por medio.</translation>
    </message>
    <message>
        <source>The platform&apos;s answer could not be read: %1</source>
        <translation>No se pudo leer la respuesta de la plataforma: %1</translation>
    </message>
    <message>
        <source>The platform answered %1.</source>
        <translation>La plataforma respondió %1.</translation>
    </message>
    <message>
        <source>Extras</source>
        <translation>Extras</translation>
    </message>
    <message>
        <source>S%1 E%2</source>
        <translation>T%1 E%2</translation>
    </message>
    <message>
        <source>Season %1</source>
        <translation>Temporada %1</translation>
    </message>
    <message>
        <source>The JSON is too large.</source>
        <translation>El JSON es demasiado grande.</translation>
    </message>
    <message>
        <source>The JSON does not parse: %1.</source>
        <translation>El JSON no es válido: %1.</translation>
    </message>
    <message>
        <source>The JSON is not an object.</source>
        <translation>El JSON no es un objeto.</translation>
    </message>
    <message>
        <source>“%1” is missing.</source>
        <translation>Falta «%1».</translation>
    </message>
    <message>
        <source>“%1” is not what it should be.</source>
        <translation>«%1» no es lo que debería.</translation>
    </message>
    <message>
        <source>The single sign-on step named no address.</source>
        <translation>El paso de inicio de sesión único no indicó ninguna dirección.</translation>
    </message>
    <message>
        <source>An unknown sign-in step: %1.</source>
        <translation>Paso de inicio de sesión desconocido: %1.</translation>
    </message>
    <message>
        <source>Sign in to Live</source>
        <translation>Iniciar sesión en Live</translation>
    </message>
    <message>
        <source>Sign in to Staging</source>
        <translation>Iniciar sesión en Staging</translation>
    </message>
    <message>
        <source>Sign in</source>
        <translation>Iniciar sesión</translation>
    </message>
    <message>
        <source>The sign-in window could not open.</source>
        <translation>No se pudo abrir la ventana de inicio de sesión.</translation>
    </message>
    <message>
        <source>The sign-in window closed before it finished.</source>
        <translation>La ventana de inicio de sesión se cerró antes de terminar.</translation>
    </message>
    <message>
        <source>The platform sent a challenge this app could not read.</source>
        <translation>La plataforma envió un desafío que esta aplicación no pudo leer.</translation>
    </message>
    <message>
        <source>The platform asked for a passkey of another site.</source>
        <translation>La plataforma pidió una llave de acceso de otro sitio.</translation>
    </message>
    <message numerus="yes">
        <source>That PIN is not right. %n tries left.</source>
        <translation>
            <numerusform>Ese PIN no es correcto. Queda %n intento.</numerusform>
            <numerusform>Ese PIN no es correcto. Quedan %n intentos.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 did not finish%2. Try again, or sign in another way.</source>
        <translation>%1 no ha finalizado%2. Inténtelo de nuevo o inicie sesión de otra forma.</translation>
    </message>
    <message>
        <source>The sign-in in the browser</source>
        <translation>El inicio de sesión en el navegador</translation>
    </message>
    <message>
        <source>Your organisation&apos;s sign-in</source>
        <translation>El inicio de sesión de su organización</translation>
    </message>
    <message>
        <source>The passkey sign-in</source>
        <translation>El inicio de sesión con llave de acceso</translation>
    </message>
    <message>
        <source>The platform has not confirmed the file.</source>
        <translation>La plataforma no ha confirmado el archivo.</translation>
    </message>
    <message>
        <source>There are too many files named “%1” in that folder.</source>
        <translation>Hay demasiados archivos llamados «%1» en esa carpeta.</translation>
    </message>
    <message>
        <source>“%1” cannot be removed.</source>
        <translation>No se puede eliminar «%1».</translation>
    </message>
    <message>
        <source>Storage sent other bytes than those asked for.</source>
        <translation>El almacenamiento envió bytes distintos de los solicitados.</translation>
    </message>
    <message>
        <source>Storage sent %1 bytes of a chunk of %2.</source>
        <translation>El almacenamiento envió %1 bytes de un bloque de %2.</translation>
    </message>
    <message>
        <source>The file changed in storage while it was being downloaded. Download it again.</source>
        <translation>El archivo cambió en el almacenamiento mientras se descargaba. Descárguelo de nuevo.</translation>
    </message>
    <message>
        <source>That file could not be reached (storage answered %1).</source>
        <translation>No se pudo acceder a ese archivo (el almacenamiento respondió %1).</translation>
    </message>
    <message>
        <source>Storage did not say how large the file is.</source>
        <translation>El almacenamiento no indicó el tamaño del archivo.</translation>
    </message>
    <message>
        <source>That file is empty.</source>
        <translation>Ese archivo está vacío.</translation>
    </message>
    <message>
        <source>The progress of this download cannot be kept, so it must not be cut off: %1</source>
        <translation>No se puede guardar el progreso de esta descarga, así que no debe interrumpirse: %1</translation>
    </message>
    <message>
        <source>Storage answered %1 on a chunk.</source>
        <translation>El almacenamiento respondió %1 para un bloque.</translation>
    </message>
    <message>
        <source>No network.</source>
        <translation>Sin red.</translation>
    </message>
    <message>
        <source>This upload cannot be recorded under the name “%1”.</source>
        <translation>Esta subida no puede registrarse con el nombre «%1».</translation>
    </message>
    <message>
        <source>The upload failed.</source>
        <translation>La subida ha fallado.</translation>
    </message>
    <message>
        <source>The platform gave an address that is none.</source>
        <translation>La plataforma dio una dirección que no lo es.</translation>
    </message>
    <message>
        <source>Storage answered %1 on a part.</source>
        <translation>El almacenamiento respondió %1 para una parte.</translation>
    </message>
    <message>
        <source>Storage answers %1.</source>
        <translation>El almacenamiento responde %1.</translation>
    </message>
    <message>
        <source>The storage service returned no ETag.</source>
        <translation>El servicio de almacenamiento no devolvió ningún ETag.</translation>
    </message>
    <message>
        <source>The connection stopped moving for 20 seconds.</source>
        <translation>La conexión estuvo parada durante 20 segundos.</translation>
    </message>
    <message>
        <source>Invalid number of keys found, expected one.</source>
        <translation>Número de claves no válido; se esperaba una.</translation>
    </message>
    <message>
        <source>No answer from storage for %1 seconds.</source>
        <translation>Sin respuesta del almacenamiento desde hace %1 segundos.</translation>
    </message>
    <message>
        <source>“%1” is on its way there already.</source>
        <translation>«%1» ya está en camino hacia allí.</translation>
    </message>
    <message>
        <source>This file is being sent already. Waiting for that.</source>
        <translation>Este archivo ya se está enviando. Se espera a que termine.</translation>
    </message>
    <message>
        <source>The file changed while it was being sent, so it was not delivered. Send it again.</source>
        <translation>El archivo cambió mientras se enviaba, así que no se entregó. Envíelo de nuevo.</translation>
    </message>
    <message>
        <source>“%1” is no longer in %2.</source>
        <translation>«%1» ya no está en %2.</translation>
    </message>
    <message>
        <source>“%1” is a folder. Only files can be sent.</source>
        <translation>«%1» es una carpeta. Solo se pueden enviar archivos.</translation>
    </message>
    <message>
        <source>“%1” is not an ordinary file.</source>
        <translation>«%1» no es un archivo normal.</translation>
    </message>
    <message>
        <source>The platform does not know this upload any more: it is sent from its start.</source>
        <translation>La plataforma ya no conoce esta subida: se envía desde el principio.</translation>
    </message>
    <message>
        <source>Waiting for the platform.</source>
        <translation>Esperando a la plataforma.</translation>
    </message>
    <message>
        <source>Finishing on the platform.</source>
        <translation>Finalizando en la plataforma.</translation>
    </message>
    <message>
        <source>“%1” has changed since: it is sent from its start.</source>
        <translation>«%1» ha cambiado desde entonces: se envía desde el principio.</translation>
    </message>
    <message>
        <source>The upload of “%1” that was cut off here is kept.</source>
        <translation>La subida de «%1» que se interrumpió aquí se conserva.</translation>
    </message>
    <message>
        <source>“%1” has another name by now, “%2”, and must be sent anew.</source>
        <translation>«%1» tiene ahora otro nombre, «%2», y debe enviarse de nuevo.</translation>
    </message>
    <message>
        <source>The platform cut the file into parts that do not add up to it.</source>
        <translation>La plataforma dividió el archivo en partes que no suman el total.</translation>
    </message>
    <message>
        <source>The progress of this upload cannot be kept, so it must not be cut off: %1</source>
        <translation>No se puede guardar el progreso de esta subida, así que no debe interrumpirse: %1</translation>
    </message>
    <message>
        <source>The upload is missing parts (%1 of %2). Resume it to send the rest.</source>
        <translation>A la subida le faltan partes (%1 de %2). Reanúdela para enviar el resto.</translation>
    </message>
    <message>
        <source>The platform did not sign part %1.</source>
        <translation>La plataforma no firmó la parte %1.</translation>
    </message>
    <message>
        <source>That file has no address.</source>
        <translation>Ese archivo no tiene dirección.</translation>
    </message>
    <message>
        <source>Storage has only %1 of “%2”, and the platform lists %3.</source>
        <translation>El almacenamiento solo tiene %1 de «%2», y la plataforma indica %3.</translation>
    </message>
    <message>
        <source>Storage has %1 of “%2”, more than the %3 that the platform lists.</source>
        <translation>El almacenamiento tiene %1 de «%2», más de los %3 que indica la plataforma.</translation>
    </message>
    <message>
        <source>“%1” is being downloaded to that folder already.</source>
        <translation>«%1» ya se está descargando en esa carpeta.</translation>
    </message>
    <message>
        <source>waiting</source>
        <translation>en espera</translation>
    </message>
    <message>
        <source>running</source>
        <translation>en curso</translation>
    </message>
    <message>
        <source>retrying</source>
        <translation>nuevo intento</translation>
    </message>
    <message>
        <source>paused</source>
        <translation>en pausa</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>fallida</translation>
    </message>
    <message>
        <source>done</source>
        <translation>lista</translation>
    </message>
    <message>
        <source>stopped</source>
        <translation>detenida</translation>
    </message>
    <message>
        <source>Second try.</source>
        <translation>Segundo intento.</translation>
    </message>
    <message>
        <source>Third try.</source>
        <translation>Tercer intento.</translation>
    </message>
    <message>
        <source>Fourth try.</source>
        <translation>Cuarto intento.</translation>
    </message>
    <message>
        <source>Fifth try.</source>
        <translation>Quinto intento.</translation>
    </message>
    <message>
        <source>Sixth try.</source>
        <translation>Sexto intento.</translation>
    </message>
    <message>
        <source>Seventh try.</source>
        <translation>Séptimo intento.</translation>
    </message>
    <message>
        <source>Eighth try.</source>
        <translation>Octavo intento.</translation>
    </message>
    <message>
        <source>Waiting for you to sign in</source>
        <translation>Esperando a que inicie sesión</translation>
    </message>
    <message>
        <source>Assets</source>
        <translation>Recursos</translation>
    </message>
    <message>
        <source>Files are being transferred.</source>
        <translation>Se están transfiriendo archivos.</translation>
    </message>
    <message>
        <source>The update could not be stored: %1.</source>
        <translation>No se pudo guardar la actualización: %1.</translation>
    </message>
    <message>
        <source>The update is too large: %1.</source>
        <translation>La actualización es demasiado grande: %1.</translation>
    </message>
    <message>
        <source>There is not enough room on the disk for the update of %1.</source>
        <translation>No hay espacio suficiente en el disco para la actualización de %1.</translation>
    </message>
    <message>
        <source>“%1” cannot be made anew: %2.</source>
        <translation>No se puede volver a crear «%1»: %2.</translation>
    </message>
    <message>
        <source>Palvera %1, build %2, is available.</source>
        <translation>Palvera %1, compilación %2, está disponible.</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Instalar</translation>
    </message>
    <message>
        <source>Checking</source>
        <translation>Comprobando</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Reiniciar</translation>
    </message>
    <message>
        <source>Palvera %1 is ready. Restart to use it; you stay signed in.</source>
        <translation>Palvera %1 está listo. Reinicie para usarlo; su sesión sigue abierta.</translation>
    </message>
    <message>
        <source>Restarting</source>
        <translation>Reiniciando</translation>
    </message>
    <message>
        <source>Retry update</source>
        <translation>Reintentar la actualización</translation>
    </message>
    <message>
        <source>A transfer is still moving. Uploads stop and wait under Interrupted, and pick up from the part they reached.</source>
        <translation>Todavía hay una transferencia en curso. Las subidas se detienen, esperan en «Interrumpidas» y continúan desde la parte alcanzada.</translation>
    </message>
    <message numerus="yes">
        <source>%n transfers are still moving. Uploads stop and wait under Interrupted, and pick up from the part they reached.</source>
        <translation>
            <numerusform>Todavía hay %n transferencia en curso. Las subidas se detienen, esperan en «Interrumpidas» y continúan desde la parte alcanzada.</numerusform>
            <numerusform>Todavía hay %n transferencias en curso. Las subidas se detienen, esperan en «Interrumpidas» y continúan desde la parte alcanzada.</numerusform>
        </translation>
    </message>
    <message>
        <source>None yet: the update feed does not answer.</source>
        <translation>Ninguna todavía: el canal de actualizaciones no responde.</translation>
    </message>
    <message>
        <source>None yet</source>
        <translation>Ninguna todavía</translation>
    </message>
    <message>
        <source>%1; the update feed does not answer.</source>
        <translation>%1; el canal de actualizaciones no responde.</translation>
    </message>
    <message>
        <source>Palvera is up to date</source>
        <translation>Palvera está actualizado</translation>
    </message>
    <message>
        <source>You have %1.</source>
        <translation>Tiene %1.</translation>
    </message>
    <message>
        <source>Could not check for updates</source>
        <translation>No se pudieron buscar actualizaciones</translation>
    </message>
    <message>
        <source>The update feed did not answer. Check your connection and try again.</source>
        <translation>El canal de actualizaciones no respondió. Compruebe su conexión e inténtelo de nuevo.</translation>
    </message>
    <message>
        <source>The preferences could not be read. They begin anew; the file is now %1.</source>
        <translation>No se pudieron leer las preferencias. Empiezan de nuevo; el archivo es ahora %1.</translation>
    </message>
    <message>
        <source>The preferences in %1 cannot be read.</source>
        <translation>No se pueden leer las preferencias en %1.</translation>
    </message>
</context>
<context>
    <name>ReloadButton</name>
    <message>
        <source>Reload</source>
        <translation>Recargar</translation>
    </message>
</context>
<context>
    <name>RootView</name>
    <message>
        <source>Not encrypted</source>
        <translation>Sin cifrar</translation>
    </message>
    <message>
        <source>The service address that PV_API names is not encrypted: others on the way can read along.</source>
        <translation>La dirección de servicio que indica PV_API no está cifrada: otros pueden leer los datos por el camino.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Send anyway</source>
        <translation>Enviar de todos modos</translation>
    </message>
    <message>
        <source>Check this file before it goes</source>
        <translation>Compruebe este archivo antes de enviarlo</translation>
    </message>
    <message>
        <source>Stay signed in</source>
        <translation>Mantener la sesión</translation>
    </message>
    <message>
        <source>Sign out</source>
        <translation>Cerrar sesión</translation>
    </message>
    <message>
        <source>Sign out while files are moving?</source>
        <translation>¿Cerrar sesión mientras se transfieren archivos?</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Clear the search</source>
        <translation>Borrar la búsqueda</translation>
    </message>
</context>
<context>
    <name>SecureField</name>
    <message>
        <source>Caps Lock is on</source>
        <translation>Bloq Mayús está activado</translation>
    </message>
    <message>
        <source>Hide what is entered</source>
        <translation>Ocultar lo introducido</translation>
    </message>
    <message>
        <source>Show what is entered</source>
        <translation>Mostrar lo introducido</translation>
    </message>
</context>
<context>
    <name>SendingDialogs</name>
    <message>
        <source>Send</source>
        <translation>Enviar</translation>
    </message>
    <message>
        <source>Send it here</source>
        <translation>Enviarlo aquí</translation>
    </message>
    <message>
        <source>Send a full-length file to Textless elements?</source>
        <translation>¿Enviar un archivo de duración completa a «Textless elements»?</translation>
    </message>
</context>
<context>
    <name>SettingsSheet</name>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>Downloads</source>
        <translation>Descargas</translation>
    </message>
    <message>
        <source>Asked at the first download</source>
        <translation>Se pregunta en la primera descarga</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Carpeta</translation>
    </message>
    <message>
        <source>Change the downloads folder…</source>
        <translation>Cambiar la carpeta de descargas…</translation>
    </message>
    <message>
        <source>Change…</source>
        <translation>Cambiar…</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>Transferencias</translation>
    </message>
    <message>
        <source>Uploads at once</source>
        <translation>Subidas simultáneas</translation>
    </message>
    <message>
        <source>Downloads at once</source>
        <translation>Descargas simultáneas</translation>
    </message>
    <message>
        <source>Give MB/s, from 0.1 on, or leave it empty.</source>
        <translation>Indique MB/s, desde 0,1, o déjelo vacío.</translation>
    </message>
    <message>
        <source>Upload limit, MB/s</source>
        <translation>Límite de subida, MB/s</translation>
    </message>
    <message>
        <source>Download limit, MB/s</source>
        <translation>Límite de descarga, MB/s</translation>
    </message>
    <message>
        <source>Give times such as 08:00.</source>
        <translation>Indique horas como 08:00.</translation>
    </message>
    <message>
        <source>Off: the limits hold all day long.</source>
        <translation>Desactivado: los límites valen todo el día.</translation>
    </message>
    <message>
        <source>Limit only between</source>
        <translation>Limitar solo entre</translation>
    </message>
    <message>
        <source>Limit from</source>
        <translation>Límite desde</translation>
    </message>
    <message>
        <source>Limit to</source>
        <translation>Límite hasta</translation>
    </message>
    <message>
        <source>While files move</source>
        <translation>Durante las transferencias</translation>
    </message>
    <message>
        <source>Keep the computer awake</source>
        <translation>Mantener el equipo activo</translation>
    </message>
    <message>
        <source>Notify when the last one has ended</source>
        <translation>Avisar cuando termine la última</translation>
    </message>
    <message>
        <source>When the window is closed</source>
        <translation>Al cerrar la ventana</translation>
    </message>
    <message>
        <source>This desktop shows no tray, so that closing the window quits.</source>
        <translation>Este escritorio no muestra área de notificación, así que al cerrar la ventana se sale.</translation>
    </message>
    <message>
        <source>Palvera stays in the tray, and starts there with your session.</source>
        <translation>Palvera permanece en el área de notificación y se inicia allí con su sesión.</translation>
    </message>
    <message>
        <source>Stay in the background</source>
        <translation>Permanecer en segundo plano</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Choose where downloads go</source>
        <translation>Elegir el destino de las descargas</translation>
    </message>
    <message>
        <source>No limit</source>
        <translation>Sin límite</translation>
    </message>
    <message>
        <source>Tell screen readers how far files are</source>
        <translation>Informar del avance a los lectores de pantalla</translation>
    </message>
</context>
<context>
    <name>ShortcutsSheet</name>
    <message>
        <source>Alt+Left</source>
        <translation>Alt+Izquierda</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Atrás</translation>
    </message>
    <message>
        <source>F5</source>
        <translation>F5</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Recargar</translation>
    </message>
    <message>
        <source>Ctrl+F</source>
        <translation>Ctrl+F</translation>
    </message>
    <message>
        <source>Search the list</source>
        <translation>Buscar en la lista</translation>
    </message>
    <message>
        <source>Ctrl+Shift+T</source>
        <translation>Ctrl+Shift+T</translation>
    </message>
    <message>
        <source>Show the transfers</source>
        <translation>Mostrar las transferencias</translation>
    </message>
    <message>
        <source>F10</source>
        <translation>F10</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menú</translation>
    </message>
    <message>
        <source>Ctrl+,</source>
        <translation>Ctrl+,</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>Ctrl+?</source>
        <translation>Ctrl+?</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>Atajos de teclado</translation>
    </message>
    <message>
        <source>F1</source>
        <translation>F1</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Ayuda</translation>
    </message>
    <message>
        <source>Ctrl+U</source>
        <translation>Ctrl+U</translation>
    </message>
    <message>
        <source>Check for updates</source>
        <translation>Buscar actualizaciones</translation>
    </message>
    <message>
        <source>Ctrl+W</source>
        <translation>Ctrl+W</translation>
    </message>
    <message>
        <source>Close the window</source>
        <translation>Cerrar la ventana</translation>
    </message>
    <message>
        <source>Ctrl+Q</source>
        <translation>Ctrl+Q</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Espacio</translation>
    </message>
    <message>
        <source>Pause or resume the transfer</source>
        <translation>Pausar o reanudar la transferencia</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Supr</translation>
    </message>
    <message>
        <source>Stop the transfer, or take it off the list</source>
        <translation>Detener la transferencia o quitarla de la lista</translation>
    </message>
    <message>
        <source>Ctrl+Up, Ctrl+Down</source>
        <translation>Ctrl+Arriba, Ctrl+Abajo</translation>
    </message>
    <message>
        <source>Move the transfer in the queue</source>
        <translation>Mover la transferencia en la cola</translation>
    </message>
    <message>
        <source>Shift+F10</source>
        <translation>Shift+F10</translation>
    </message>
    <message>
        <source>Menu of the row</source>
        <translation>Menú de la fila</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Ctrl++, Ctrl+-, Ctrl+0</source>
        <translation>Ctrl++, Ctrl+-, Ctrl+0</translation>
    </message>
    <message>
        <source>Larger, smaller, usual text</source>
        <translation>Texto mayor, menor, habitual</translation>
    </message>
</context>
<context>
    <name>SignInFace</name>
    <message>
        <source>Continue</source>
        <translation>Continuar</translation>
    </message>
    <message>
        <source>Signing in</source>
        <translation>Iniciando sesión</translation>
    </message>
</context>
<context>
    <name>SiteChoice</name>
    <message>
        <source>Platform</source>
        <translation>Plataforma</translation>
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
        <translation>Una misma cuenta sirve en ambas. Cada una mantiene su propia sesión.</translation>
    </message>
</context>
<context>
    <name>Spinner</name>
    <message>
        <source>Busy</source>
        <translation>Ocupado</translation>
    </message>
</context>
<context>
    <name>StatusBadge</name>
    <message>
        <source>A file is filed against this</source>
        <translation>Hay un archivo registrado para este elemento</translation>
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
        <translation>Reanudar</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausar</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
    </message>
</context>
<context>
    <name>TransfersButton</name>
    <message>
        <source>Transfers</source>
        <translation>Transferencias</translation>
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
        <translation>Reanudar todo</translation>
    </message>
    <message>
        <source>Pause all</source>
        <translation>Pausar todo</translation>
    </message>
    <message>
        <source>Stop all</source>
        <translation>Detener todo</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Vaciar la lista</translation>
    </message>
</context>
<context>
    <name>TransfersView</name>
    <message>
        <source>Transfers</source>
        <translation>Transferencias</translation>
    </message>
    <message>
        <source>In flight</source>
        <translation>En curso</translation>
    </message>
    <message>
        <source>Finished</source>
        <translation>Finalizadas</translation>
    </message>
    <message>
        <source>Interrupted</source>
        <translation>Interrumpidas</translation>
    </message>
    <message>
        <source>Nothing moving</source>
        <translation>Nada en curso</translation>
    </message>
    <message>
        <source>Nothing finished yet</source>
        <translation>Nada finalizado todavía</translation>
    </message>
    <message>
        <source>Nothing interrupted</source>
        <translation>Nada interrumpido</translation>
    </message>
    <message>
        <source>Keep going</source>
        <translation>Continuar</translation>
    </message>
    <message>
        <source>Stop all</source>
        <translation>Detener todo</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Stop all transfers?</source>
        <translation>¿Detener todas las transferencias?</translation>
    </message>
</context>
<context>
    <name>TransfersWindow</name>
    <message>
        <source>Transfers</source>
        <translation>Transferencias</translation>
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
        <translation>Mostrar Palvera</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
</context>
<context>
    <name>UpdateAlert</name>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
</context>
<context>
    <name>UpdateDialogs</name>
    <message>
        <source>Not yet</source>
        <translation>Todavía no</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>Reiniciar</translation>
    </message>
    <message>
        <source>Restart Palvera now?</source>
        <translation>¿Reiniciar Palvera ahora?</translation>
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
        <translation>Palvera %1 no se inició en este equipo, así que se ejecuta %2 en su lugar.</translation>
    </message>
</context>
<context>
    <name>palvera::Announcements</name>
    <message>
        <source>“%1” is done.</source>
        <translation>«%1» ha terminado.</translation>
    </message>
    <message>
        <source>“%1” could not be transferred. %2</source>
        <translation>No se pudo transferir «%1». %2</translation>
    </message>
    <message>
        <source>“%1” is at a standstill. %2</source>
        <translation>«%1» está detenido. %2</translation>
    </message>
    <message>
        <source>“%1”: %2 percent.</source>
        <translation>«%1»: %2 por ciento.</translation>
    </message>
</context>
<context>
    <name>palvera::AssetsView</name>
    <message>
        <source>Uploads</source>
        <translation>Subidas</translation>
    </message>
    <message>
        <source>Assets</source>
        <translation>Recursos</translation>
    </message>
    <message>
        <source>Projects</source>
        <translation>Proyectos</translation>
    </message>
    <message>
        <source>%1 loaded</source>
        <translation>%1 cargados</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
    </message>
    <message>
        <source>The files did not arrive from the other program. Drop them again, or choose Upload.</source>
        <translation>Los archivos no han llegado del otro programa. Suéltelos de nuevo o elija «Subir».</translation>
    </message>
    <message>
        <source>That is not a file on this computer. Save it here first, then drop it.</source>
        <translation>Ese no es un archivo de este equipo. Guárdelo primero aquí y luego suéltelo.</translation>
    </message>
    <message>
        <source>What is not a file on this computer was left out. Save it here first.</source>
        <translation>Se ha omitido lo que no es un archivo de este equipo. Guárdelo primero aquí.</translation>
    </message>
    <message>
        <source>All types</source>
        <translation>Todos los tipos</translation>
    </message>
</context>
<context>
    <name>palvera::DeliverableView</name>
    <message>
        <source>The last upload failed: %1</source>
        <translation>La última subida falló: %1</translation>
    </message>
    <message>
        <source>The upload of “%1” was cut off, and the file is not where it was. %2.</source>
        <translation>La subida de «%1» se interrumpió y el archivo no está donde estaba. %2.</translation>
    </message>
    <message>
        <source>The upload of “%1” was cut off. %2.</source>
        <translation>La subida de «%1» se interrumpió. %2.</translation>
    </message>
</context>
<context>
    <name>palvera::DeliverablesView</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
    </message>
    <message>
        <source>Upload failed</source>
        <translation>Error en la subida</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nombre</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Estado</translation>
    </message>
    <message>
        <source>Platform</source>
        <translation>Plataforma</translation>
    </message>
    <message>
        <source>a file is filed</source>
        <translation>hay un archivo archivado</translation>
    </message>
</context>
<context>
    <name>palvera::FileSender</name>
    <message>
        <source>The file did not arrive from the other program. Drop it again, or choose it here.</source>
        <translation>El archivo no ha llegado del otro programa. Suéltelo de nuevo o elíjalo aquí.</translation>
    </message>
    <message>
        <source>That is not a file on this computer. Save it here first, then drop it.</source>
        <translation>Ese no es un archivo de este equipo. Guárdelo primero aquí y luego suéltelo.</translation>
    </message>
    <message>
        <source>“%1” was not sent to “%2”. %3</source>
        <translation>«%1» no se envió a «%2». %3</translation>
    </message>
    <message>
        <source>It looks too long for that: it is %1.</source>
        <translation>Parece demasiado largo para eso: ocupa %1.</translation>
    </message>
    <message>
        <source>Only “%1” was taken.</source>
        <translation>Solo se ha tomado «%1».</translation>
    </message>
    <message>
        <source>“%1” is on its way already. Stop it before you send another file.</source>
        <translation>«%1» ya está en camino. Deténgalo antes de enviar otro archivo.</translation>
    </message>
    <message>
        <source>%1 is %2. Textless elements are usually a few minutes long. The picture master row is probably the right place.</source>
        <translation>%1 ocupa %2. Los «Textless elements» suelen durar unos minutos. Probablemente el lugar correcto sea la fila del máster de imagen.</translation>
    </message>
    <message>
        <source>This file</source>
        <translation>Este archivo</translation>
    </message>
</context>
<context>
    <name>palvera::InterruptedView</name>
    <message>
        <source>Discard this upload?</source>
        <translation>¿Descartar esta subida?</translation>
    </message>
    <message>
        <source>Discard this download?</source>
        <translation>¿Descartar esta descarga?</translation>
    </message>
    <message>
        <source>“%1” has not begun to go up. Your file stays as it is.</source>
        <translation>La subida de «%1» no ha empezado. Su archivo queda como está.</translation>
    </message>
    <message>
        <source>“%1”: %2. What storage has of it is thrown away; your file stays as it is.</source>
        <translation>«%1»: %2. Se desecha lo que hay de él en el almacenamiento; su archivo queda como está.</translation>
    </message>
    <message>
        <source>“%1” has not begun to come down.</source>
        <translation>La descarga de «%1» no ha empezado.</translation>
    </message>
    <message>
        <source>“%1”: %2 downloaded. That is removed from “%3”.</source>
        <translation>«%1»: %2 descargados. Se eliminan de «%3».</translation>
    </message>
    <message>
        <source>That is not a file on this computer.</source>
        <translation>Ese no es un archivo de este equipo.</translation>
    </message>
    <message>
        <source>“%1” in “%2” has the size and the time of the file that was being sent. Only the rest of it is sent.</source>
        <translation>«%1» en «%2» tiene el tamaño y la hora del archivo que se estaba enviando. Solo se envía el resto.</translation>
    </message>
    <message>
        <source>“%1” in “%2” is not as the file that was being sent: its size or the time of its last change is another one. It can be sent from the start; what had gone up is thrown away then.</source>
        <translation>«%1» en «%2» no es como el archivo que se estaba enviando: su tamaño o la hora de su última modificación es distinta. Puede enviarse desde el principio; en ese caso se desecha lo que ya se había subido.</translation>
    </message>
    <message>
        <source>That file has changed meanwhile.</source>
        <translation>Ese archivo ha cambiado entretanto.</translation>
    </message>
</context>
<context>
    <name>palvera::LoginView</name>
    <message>
        <source>Waiting for Palvera to answer…</source>
        <translation>Esperando la respuesta de Palvera…</translation>
    </message>
    <message>
        <source>This computer is not connected to a network.</source>
        <translation>Este equipo no está conectado a ninguna red.</translation>
    </message>
    <message>
        <source>That sign-in was cancelled. Start it again to use it.</source>
        <translation>Ese inicio de sesión se canceló. Inícielo de nuevo para usarlo.</translation>
    </message>
    <message>
        <source>That sign-in was not started here, so it was not used.</source>
        <translation>Ese inicio de sesión no se inició aquí, así que no se ha usado.</translation>
    </message>
    <message>
        <source>Palvera can be reached again. Begin with your work email.</source>
        <translation>Palvera vuelve a estar disponible. Empiece con su correo del trabajo.</translation>
    </message>
    <message>
        <source>Cannot reach Palvera. Check your connection and try again.</source>
        <translation>No se puede acceder a Palvera. Compruebe su conexión e inténtelo de nuevo.</translation>
    </message>
    <message>
        <source>Could not send that. Check your connection.</source>
        <translation>No se pudo enviar. Compruebe su conexión.</translation>
    </message>
    <message>
        <source>That passkey did not work. Sign in another way.</source>
        <translation>Esa llave de acceso no ha funcionado. Inicie sesión de otra forma.</translation>
    </message>
</context>
<context>
    <name>palvera::ProjectsView</name>
    <message>
        <source>Platform</source>
        <translation>Plataforma</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Nombre</translation>
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
        <translation>Compilación %1</translation>
    </message>
    <message>
        <source>One file is moving. It waits under Interrupted and goes on from where it was once you are signed in again.</source>
        <translation>Se está transfiriendo un archivo. Espera en «Interrumpidas» y continúa donde estaba en cuanto vuelva a iniciar sesión.</translation>
    </message>
    <message>
        <source>The deliverable cannot be shown. %1</source>
        <translation>No se puede mostrar el entregable. %1</translation>
    </message>
    <message>
        <source>The platform no longer has that deliverable.</source>
        <translation>La plataforma ya no tiene ese entregable.</translation>
    </message>
    <message>
        <source>Your sign-in has expired. Sign in again.</source>
        <translation>Su sesión ha caducado. Inicie sesión de nuevo.</translation>
    </message>
    <message numerus="yes">
        <source>%n files are moving. They wait under Interrupted and go on from where they were once you are signed in again.</source>
        <translation>
            <numerusform>Se está transfiriendo %n archivo. Espera en «Interrumpidas» y continúa donde estaba en cuanto vuelva a iniciar sesión.</numerusform>
            <numerusform>Se están transfiriendo %n archivos. Esperan en «Interrumpidas» y continúan donde estaban en cuanto vuelva a iniciar sesión.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>palvera::RowDrop</name>
    <message>
        <source>Send “%1” to %2?</source>
        <translation>¿Enviar «%1» a «%2»?</translation>
    </message>
    <message>
        <source>It replaces “%1”.</source>
        <translation>Reemplaza a «%1».</translation>
    </message>
    <message>
        <source>One file goes to it. Left out: %1.</source>
        <translation>Se envía un solo archivo. Se omite: %1.</translation>
    </message>
</context>
<context>
    <name>palvera::Session</name>
    <message>
        <source>Signed in, but only for now: %1</source>
        <translation>Sesión iniciada, pero solo por ahora: %1</translation>
    </message>
    <message>
        <source>You are signed in as %1.</source>
        <translation>Ha iniciado sesión como %1.</translation>
    </message>
    <message>
        <source>Signed out on this computer. The platform could not be told.</source>
        <translation>Sesión cerrada en este equipo. No se pudo avisar a la plataforma.</translation>
    </message>
</context>
<context>
    <name>palvera::TransfersView</name>
    <message>
        <source>%1 cut off</source>
        <translation>%1 interrumpidas</translation>
    </message>
    <message>
        <source>Going to %1

%2</source>
        <translation>Destino: %1

%2</translation>
    </message>
    <message>
        <source>In flight</source>
        <translation>En curso</translation>
    </message>
    <message>
        <source>Finished</source>
        <translation>Finalizadas</translation>
    </message>
    <message>
        <source>Interrupted</source>
        <translation>Interrumpidas</translation>
    </message>
    <message>
        <source>What has gone up is thrown away, so nothing half delivered is left in storage. What has come down is kept on disk.</source>
        <translation>Lo que se ha subido se desecha, para que no quede nada a medio entregar en el almacenamiento. Lo que se ha descargado se conserva en el disco.</translation>
    </message>
</context>
<context>
    <name>palvera::Updater</name>
    <message>
        <source>Updates of this copy come with those of the system.</source>
        <translation>Las actualizaciones de esta copia llegan con las del sistema.</translation>
    </message>
    <message>
        <source>You have %1.</source>
        <translation>Tiene %1.</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <translation>Buscando actualizaciones…</translation>
    </message>
    <message>
        <source>The download failed.</source>
        <translation>La descarga ha fallado.</translation>
    </message>
    <message>
        <source>The installer is missing from this copy of the app.</source>
        <translation>Falta el instalador en esta copia de la aplicación.</translation>
    </message>
    <message>
        <source>The installer did not answer: %1</source>
        <translation>El instalador no respondió: %1</translation>
    </message>
</context>
</TS>
