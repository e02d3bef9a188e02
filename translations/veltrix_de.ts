<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Cable</name>
    <message>
        <source>--link needs pseudo-terminals; use --listen</source>
        <translation>--link braucht Pseudo-Terminals; nehmen Sie --listen</translation>
    </message>
</context>
<context>
    <name>ChangesOnScreen</name>
    <message>
        <source>Show changes on screen</source>
        <translation>Änderungen einblenden</translation>
    </message>
    <message>
        <source>Shows the layer and what the knob does for a moment, while you work elsewhere</source>
        <translation>Zeigt kurz die Ebene und was der Drehknopf tut, während Sie anderswo arbeiten</translation>
    </message>
    <message>
        <source>%1 · %2</source>
        <translation>%1 · %2</translation>
    </message>
</context>
<context>
    <name>ComboMapping</name>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>Übernehmen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Mapping</source>
        <translation>Belegung</translation>
    </message>
    <message>
        <source>Chooses, saves and deletes mappings</source>
        <translation>Wählt, speichert und löscht Belegungen</translation>
    </message>
    <message>
        <source>Choose what all buttons do, or save what they do now</source>
        <translation>Wählen, was alle Tasten tun, oder speichern, was sie jetzt tun</translation>
    </message>
    <message>
        <source>Examples</source>
        <translation>Beispiele</translation>
    </message>
    <message>
        <source>The mappings that come with the program</source>
        <translation>Die Belegungen, die das Programm mitbringt</translation>
    </message>
    <message>
        <source>Custom</source>
        <translation>Eigene</translation>
    </message>
    <message>
        <source>The mappings that you have saved</source>
        <translation>Die Belegungen, die Sie gespeichert haben</translation>
    </message>
    <message>
        <source>Keep what all buttons do now under a name of its own</source>
        <translation>Unter einem eigenen Namen aufheben, was alle Tasten jetzt tun</translation>
    </message>
    <message>
        <source>none yet</source>
        <translation>noch keine</translation>
    </message>
</context>
<context>
    <name>ComboMenu</name>
    <message>
        <source>Button %1</source>
        <translation>Taste %1</translation>
    </message>
    <message>
        <source>Shift 1</source>
        <translation>Shift 1</translation>
    </message>
    <message>
        <source>Shift 2</source>
        <translation>Shift 2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Click to change what it does</source>
        <translation>Klicken, um das zu ändern</translation>
    </message>
    <message>
        <source>Shortcut Key</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Presses up to three keys for you</source>
        <translation>Drückt bis zu drei Tasten für Sie</translation>
    </message>
    <message>
        <source>Midi</source>
        <translation>Midi</translation>
    </message>
    <message>
        <source>Sends a note or a controller value to music software</source>
        <translation>Sendet eine Note oder einen Controllerwert an Musikprogramme</translation>
    </message>
    <message>
        <source>Monitor Left</source>
        <translation>Monitor links</translation>
    </message>
    <message>
        <source>Moves the pointer to the next monitor</source>
        <translation>Setzt den Mauszeiger auf den nächsten Monitor</translation>
    </message>
    <message>
        <source>Monitor Right</source>
        <translation>Monitor rechts</translation>
    </message>
    <message>
        <source>Moves the pointer to the previous monitor</source>
        <translation>Setzt den Mauszeiger auf den vorigen Monitor</translation>
    </message>
    <message>
        <source>Horizontal</source>
        <translation>Waagerecht</translation>
    </message>
    <message>
        <source>Sets the knob to drag the pointer left and right</source>
        <translation>Der Drehknopf zieht den Mauszeiger dann nach links und rechts</translation>
    </message>
    <message>
        <source>Vertical</source>
        <translation>Senkrecht</translation>
    </message>
    <message>
        <source>Sets the knob to drag the pointer up and down</source>
        <translation>Der Drehknopf zieht den Mauszeiger dann nach oben und unten</translation>
    </message>
    <message>
        <source>Circular</source>
        <translation>Kreis</translation>
    </message>
    <message>
        <source>Sets the knob to drag the pointer up and down, and back when it is let go</source>
        <translation>Der Drehknopf zieht den Mauszeiger dann auf und ab und beim Loslassen zurück</translation>
    </message>
    <message>
        <source> ↓  ↑ Key</source>
        <translation>Tasten ↓ ↑</translation>
    </message>
    <message>
        <source>Sets the knob to press the arrow keys down and up</source>
        <translation>Der Drehknopf drückt dann die Pfeiltasten nach unten und oben</translation>
    </message>
    <message>
        <source>← → Key</source>
        <translation>Tasten ← →</translation>
    </message>
    <message>
        <source>Sets the knob to press the arrow keys left and right</source>
        <translation>Der Drehknopf drückt dann die Pfeiltasten nach links und rechts</translation>
    </message>
    <message>
        <source>Midi for Knob</source>
        <translation>Midi für Drehknopf</translation>
    </message>
    <message>
        <source>Sets the knob to send controller values to music software</source>
        <translation>Der Drehknopf sendet dann Controllerwerte an Musikprogramme</translation>
    </message>
    <message>
        <source>While it is held, all buttons do what their Shift 1 says</source>
        <translation>Solange sie gehalten wird, tun alle Tasten, was bei ihnen unter Shift 1 steht</translation>
    </message>
    <message>
        <source>While it is held, all buttons do what their Shift 2 says</source>
        <translation>Solange sie gehalten wird, tun alle Tasten, was bei ihnen unter Shift 2 steht</translation>
    </message>
    <message>
        <source>M.Left</source>
        <translation>M. links</translation>
    </message>
    <message>
        <source>M.Right</source>
        <translation>M. rechts</translation>
    </message>
    <message>
        <source>empty</source>
        <translation>leer</translation>
    </message>
    <message>
        <source>type a shorcut</source>
        <translation>Tastenkürzel drücken</translation>
    </message>
    <message>
        <source>The knob sends MIDI channel %1, controller %2</source>
        <translation>Der Drehknopf sendet auf MIDI-Kanal %1, Controller %2</translation>
    </message>
    <message>
        <source>Sends MIDI channel %1, note %2</source>
        <translation>Sendet auf MIDI-Kanal %1 die Note %2</translation>
    </message>
    <message>
        <source>Sends MIDI channel %1, controller %2</source>
        <translation>Sendet auf MIDI-Kanal %1, Controller %2</translation>
    </message>
    <message>
        <source>Presses %1</source>
        <translation>Drückt %1</translation>
    </message>
    <message>
        <source>%1: presses %2</source>
        <translation>%1: drückt %2</translation>
    </message>
    <message>
        <source>Knob</source>
        <translation>Drehknopf</translation>
    </message>
    <message>
        <source>Nothing yet</source>
        <translation>Noch nichts</translation>
    </message>
    <message>
        <source>%1, %2: %3</source>
        <translation>%1, %2: %3</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>path</source>
        <translation>Pfad</translation>
    </message>
    <message>
        <source>Log every event.</source>
        <translation>Jedes Ereignis protokollieren.</translation>
    </message>
    <message>
        <source>Turns the buttons and the knob of the control surface into actions.</source>
        <translation>Macht aus den Tasten und dem Drehknopf des Bediengeräts Aktionen.</translation>
    </message>
    <message>
        <source>Unexpected argument: %1</source>
        <translation>Unerwartetes Argument: %1</translation>
    </message>
    <message>
        <source>Show this help.</source>
        <translation>Diese Hilfe zeigen.</translation>
    </message>
    <message>
        <source>Use this serial port as the device&apos;s for as long as it exists. tcp:127.0.0.1:PORT is a virtual device.</source>
        <translation>Diesen seriellen Anschluss als den des Geräts nehmen, solange es ihn gibt. tcp:127.0.0.1:PORT ist ein virtuelles Gerät.</translation>
    </message>
    <message>
        <source>%1 is not on this computer: a virtual device is at tcp:127.0.0.1:PORT, with a port from 1 to 65535.</source>
        <translation>%1 ist nicht auf diesem Rechner: Ein virtuelles Gerät steht unter tcp:127.0.0.1:PORT, mit einem Port von 1 bis 65535.</translation>
    </message>
    <message>
        <source>How keys and pointer reach the desktop: %1.</source>
        <translation>Wie Tasten und Zeiger zum Desktop kommen: %1.</translation>
    </message>
    <message>
        <source>way</source>
        <translation>Weg</translation>
    </message>
    <message>
        <source>--input takes one of %1.</source>
        <translation>--input nimmt eines von %1.</translation>
    </message>
    <message>
        <source>--%1 and --%2 do not go together.</source>
        <translation>--%1 und --%2 gehen nicht zusammen.</translation>
    </message>
    <message>
        <source>--json goes with --list and --status.</source>
        <translation>--json gehört zu --list und --status.</translation>
    </message>
    <message>
        <source>%1 and --%2 do not go together.</source>
        <translation>%1 und --%2 gehen nicht zusammen.</translation>
    </message>
    <message>
        <source>With --list and --status: answer with JSON, for programs.</source>
        <translation>Mit --list und --status: als JSON antworten, für Programme.</translation>
    </message>
    <message>
        <source>Veltrix is running already and cannot take %1: quit it first.</source>
        <translation>Veltrix läuft schon und kann %1 nicht annehmen: erst beenden.</translation>
    </message>
    <message>
        <source>A value is missing after --%1.</source>
        <translation>Nach --%1 fehlt ein Wert.</translation>
    </message>
</context>
<context>
    <name>Commands</name>
    <message>
        <source>Have the running program use the mapping of this name.</source>
        <translation>Das laufende Programm die Belegung dieses Namens verwenden lassen.</translation>
    </message>
    <message>
        <source>List the running program&apos;s mappings.</source>
        <translation>Die Belegungen des laufenden Programms auflisten.</translation>
    </message>
    <message>
        <source>Show the running program&apos;s window.</source>
        <translation>Das Fenster des laufenden Programms zeigen.</translation>
    </message>
    <message>
        <source>Tell the running program&apos;s device, mapping, layer and knob mode.</source>
        <translation>Gerät, Belegung, Ebene und Drehknopf-Modus des laufenden Programms nennen.</translation>
    </message>
    <message>
        <source>List the earlier versions of your mapping files.</source>
        <translation>Die früheren Fassungen der eigenen Belegungsdateien aufzählen.</translation>
    </message>
    <message>
        <source>Bring an earlier version of a mapping file back.</source>
        <translation>Eine frühere Fassung einer Belegungsdatei zurückholen.</translation>
    </message>
    <message>
        <source>Add the mappings of this file to your own.</source>
        <translation>Die Belegungen dieser Datei zu den eigenen legen.</translation>
    </message>
    <message>
        <source>Write the mapping of this name to a new file.</source>
        <translation>Die Belegung dieses Namens in eine neue Datei schreiben.</translation>
    </message>
    <message>
        <source>Tell what a request for support needs to know: device, input, paths, versions.</source>
        <translation>Sagt, was eine Anfrage um Hilfe wissen muss: Gerät, Eingaben, Ordner, Versionen.</translation>
    </message>
    <message>
        <source>Print the licences of the program and of what it is built on.</source>
        <translation>Zeigt die Lizenzen des Programms und dessen, worauf es baut.</translation>
    </message>
</context>
<context>
    <name>DevicePicture</name>
    <message>
        <source>Drawing of the device</source>
        <translation>Zeichnung des Geräts</translation>
    </message>
    <message>
        <source>Click to change what it does</source>
        <translation>Klicken, um das zu ändern</translation>
    </message>
    <message>
        <source>Touch it to take hold, turn it to act.
Buttons with a knob mode choose what it does.</source>
        <translation>Berühren heißt zugreifen, drehen heißt handeln.
Tasten mit einem Drehknopf-Modus wählen, was er tut.</translation>
    </message>
</context>
<context>
    <name>DeviceZR</name>
    <message>
        <source>Print</source>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>Print what the buttons do</source>
        <translation>Drucken, was die Tasten tun</translation>
    </message>
    <message>
        <source>The program in front has more rights and takes no keys. Start Veltrix as administrator.</source>
        <translation>Das Programm vorn hat mehr Rechte und nimmt keine Tasten an. Veltrix als Administrator starten.</translation>
    </message>
    <message>
        <source>Not saved: %1</source>
        <translation>Nicht gespeichert: %1</translation>
    </message>
    <message>
        <source>Not deleted: %1</source>
        <translation>Nicht gelöscht: %1</translation>
    </message>
    <message>
        <source>Not kept: %1</source>
        <translation>Nicht behalten: %1</translation>
    </message>
    <message>
        <source>The settings cannot be stored.</source>
        <translation>Einstellungen werden nicht gespeichert.</translation>
    </message>
    <message>
        <source>Launch on startup could not be changed.</source>
        <translation>Der Autostart ließ sich nicht ändern.</translation>
    </message>
</context>
<context>
    <name>Doctor</name>
    <message>
        <source>%1 is there, and the running Veltrix uses it</source>
        <translation>%1 ist da, und das laufende Veltrix benutzt ihn</translation>
    </message>
    <message>
        <source>No display answers: there is no desktop, and no window can be shown</source>
        <translation>Kein Bildschirm antwortet: es gibt keine Arbeitsfläche, und kein Fenster kann gezeigt werden</translation>
    </message>
    <message>
        <source>Program: %1</source>
        <translation>Programm: %1</translation>
    </message>
    <message>
        <source>Mappings: %1</source>
        <translation>Belegungen: %1</translation>
    </message>
    <message>
        <source>Settings: %1</source>
        <translation>Einstellungen: %1</translation>
    </message>
    <message>
        <source>Log: %1</source>
        <translation>Protokoll: %1</translation>
    </message>
    <message>
        <source>User guide: %1</source>
        <translation>Anleitung: %1</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>Running copy</source>
        <translation>Laufendes Programm</translation>
    </message>
    <message>
        <source>Session</source>
        <translation>Sitzung</translation>
    </message>
    <message>
        <source>Input</source>
        <translation>Eingaben</translation>
    </message>
    <message>
        <source>MIDI outputs</source>
        <translation>MIDI-Ausgänge</translation>
    </message>
    <message>
        <source>Tray</source>
        <translation>Infobereich</translation>
    </message>
    <message>
        <source>there is one</source>
        <translation>ist vorhanden</translation>
    </message>
    <message>
        <source>This desktop has none: start the program once more to bring a hidden window back</source>
        <translation>Diese Arbeitsfläche hat keinen: noch einmal starten bringt ein verborgenes Fenster zurück</translation>
    </message>
    <message>
        <source>Paths</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Versions</source>
        <translation>Versionen</translation>
    </message>
    <message>
        <source>Last lines of the log</source>
        <translation>Letzte Zeilen des Protokolls</translation>
    </message>
</context>
<context>
    <name>FileResult</name>
    <message>
        <source>No space left on device</source>
        <translation>Der Datenträger ist voll</translation>
    </message>
    <message>
        <source>Permission denied</source>
        <translation>Keine Berechtigung</translation>
    </message>
    <message>
        <source>Existing file is not writable</source>
        <translation>Die Datei ist schreibgeschützt</translation>
    </message>
    <message>
        <source>Input/output error</source>
        <translation>Fehler des Datenträgers</translation>
    </message>
    <message>
        <source>File too large</source>
        <translation>Die Datei wäre zu groß</translation>
    </message>
    <message>
        <source>Disk quota exceeded</source>
        <translation>Der erlaubte Platz ist aufgebraucht</translation>
    </message>
    <message>
        <source>Read-only file system</source>
        <translation>Der Datenträger ist schreibgeschützt</translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>larger than 64 MiB</source>
        <translation>größer als 64 MiB</translation>
    </message>
    <message>
        <source>too many symbolic links</source>
        <translation>zu viele symbolische Links</translation>
    </message>
    <message>
        <source>there is none</source>
        <translation>es gibt sie nicht</translation>
    </message>
    <message>
        <source>it has no place for a mapping</source>
        <translation>die Datei hat keinen Platz für eine Belegung</translation>
    </message>
    <message>
        <source>it is no mapping file; a copy of it lies beside it</source>
        <translation>keine Belegungsdatei; eine Kopie liegt daneben</translation>
    </message>
    <message>
        <source>it has been changed since</source>
        <translation>sie wurde seitdem geändert</translation>
    </message>
    <message>
        <source>it holds no mapping</source>
        <translation>sie enthält keine Belegung</translation>
    </message>
    <message>
        <source>unexpected end of file</source>
        <translation>unerwartetes Ende der Datei</translation>
    </message>
    <message>
        <source>its encoding is not known</source>
        <translation>ihre Kodierung ist nicht bekannt</translation>
    </message>
    <message>
        <source>it carries document type declarations</source>
        <translation>sie enthält Deklarationen eines Dokumenttyps</translation>
    </message>
    <message>
        <source>it changed while it was read</source>
        <translation>sie wurde beim Lesen geändert</translation>
    </message>
    <message>
        <source>line %1: %2 (column %3)</source>
        <translation>Zeile %1: %2 (Spalte %3)</translation>
    </message>
    <message>
        <source>&lt;%1&gt; is no mapping file&apos;s</source>
        <translation>&lt;%1&gt; gehört in keine Belegungsdatei</translation>
    </message>
    <message>
        <source>more than %1 tags and attributes</source>
        <translation>mehr als %1 Marken und Attribute</translation>
    </message>
    <message>
        <source>more than %1 tags</source>
        <translation>mehr als %1 Marken</translation>
    </message>
    <message>
        <source>a tag of more than %1 attributes</source>
        <translation>eine Marke mit mehr als %1 Attributen</translation>
    </message>
    <message>
        <source>nested deeper than %1 levels</source>
        <translation>tiefer als %1 Ebenen verschachtelt</translation>
    </message>
    <message>
        <source>it is not encoded in %1</source>
        <translation>sie ist nicht in %1 kodiert</translation>
    </message>
    <message>
        <source>it holds the character U+%1</source>
        <translation>sie enthält das Zeichen U+%1</translation>
    </message>
    <message>
        <source>the folder %1 cannot be made</source>
        <translation>der Ordner %1 lässt sich nicht anlegen</translation>
    </message>
    <message>
        <source>by its name it is no version of custom.xml, current.xml or programs.xml</source>
        <translation>dem Namen nach keine Fassung von custom.xml, current.xml oder programs.xml</translation>
    </message>
    <message>
        <source>it does not give each mapping a program of its own</source>
        <translation>sie gibt nicht jeder Belegung ein eigenes Programm</translation>
    </message>
</context>
<context>
    <name>FindingText</name>
    <message>
        <source>No device is plugged in. The panel opens by itself as soon as the device is found.</source>
        <translation>Kein Gerät ist angesteckt. Die Einstellungen öffnen sich von selbst, sobald das Gerät gefunden ist.</translation>
    </message>
    <message>
        <source>%1, which was named as the device&apos;s port, is not there</source>
        <translation>%1, als Anschluss des Geräts angegeben, ist nicht da</translation>
    </message>
    <message>
        <source>%1 is there, but it is not the control surface</source>
        <translation>%1 ist da, ist aber nicht das Bediengerät</translation>
    </message>
    <message>
        <source>%1 (%2) is there, but it is not the control surface</source>
        <translation>%1 (%2) ist da, ist aber nicht das Bediengerät</translation>
    </message>
    <message>
        <source>%1 is there, but this user may not open it: install the package&apos;s rule or join the group %2</source>
        <translation>%1 ist da, aber dieser Benutzer darf ihn nicht öffnen: Regel des Pakets installieren oder der Gruppe %2 beitreten</translation>
    </message>
    <message>
        <source>%1 is there, but another program holds it: close that program</source>
        <translation>%1 ist da, aber ein anderes Programm belegt ihn: dieses Programm schließen</translation>
    </message>
    <message>
        <source>%1 is there, but %2 holds it: close that program</source>
        <translation>%1 ist da, aber %2 belegt ihn: dieses Programm schließen</translation>
    </message>
    <message>
        <source>%1 is there, but cannot be opened: %2</source>
        <translation>%1 ist da, lässt sich aber nicht öffnen: %2</translation>
    </message>
    <message>
        <source>The device comes and goes: try another cable, or another socket without a hub</source>
        <translation>Das Gerät kommt und geht: anderes Kabel probieren, oder eine andere Buchse ohne Hub</translation>
    </message>
    <message>
        <source>The device is there: %1</source>
        <translation>Das Gerät ist da: %1</translation>
    </message>
</context>
<context>
    <name>GameView</name>
    <message>
        <source>Paddle game</source>
        <translation>Schlägerspiel</translation>
    </message>
</context>
<context>
    <name>HidingNotice</name>
    <message>
        <source>Veltrix goes on</source>
        <translation>Veltrix läuft weiter</translation>
    </message>
    <message>
        <source>This desktop has no tray. Start Veltrix once more to bring its window back.</source>
        <translation>Diese Arbeitsfläche hat keinen Infobereich. Veltrix noch einmal starten bringt das Fenster zurück.</translation>
    </message>
</context>
<context>
    <name>HistoryCommands</name>
    <message>
        <source>damaged: %1</source>
        <translation>beschädigt: %1</translation>
    </message>
    <message>
        <source>There are no earlier versions yet.</source>
        <translation>Es gibt noch keine früheren Fassungen.</translation>
    </message>
    <message>
        <source>%1 was not brought back: %2.</source>
        <translation>%1 wurde nicht zurückgeholt: %2.</translation>
    </message>
    <message>
        <source>%1 is back. What was there before is in the history now.</source>
        <translation>%1 ist wieder da. Was zuvor da war, steht jetzt bei den früheren Fassungen.</translation>
    </message>
</context>
<context>
    <name>ImportedMappings</name>
    <message>
        <source>“%1” is no number of a control, which are 0 to 9</source>
        <translation>„%1“ ist keine Nummer eines Bedienelements, die von 0 bis 9 gehen</translation>
    </message>
    <message>
        <source>button %1</source>
        <translation>Taste %1</translation>
    </message>
    <message>
        <source>%1 is no layer</source>
        <translation>%1 ist keine Ebene</translation>
    </message>
    <message>
        <source>“%1” is no action</source>
        <translation>„%1“ ist keine Aktion</translation>
    </message>
    <message>
        <source>“%1” is no single character</source>
        <translation>„%1“ ist kein einzelnes Zeichen</translation>
    </message>
    <message>
        <source>“%1” is no number</source>
        <translation>„%1“ ist keine Zahl</translation>
    </message>
    <message>
        <source>line %1, %2: %3</source>
        <translation>Zeile %1, %2: %3</translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation>es gibt keine solche Datei</translation>
    </message>
    <message>
        <source>it holds no mapping</source>
        <translation>sie enthält keine Belegung</translation>
    </message>
    <message>
        <source>it holds more than %1 mappings</source>
        <translation>sie enthält mehr als %1 Belegungen</translation>
    </message>
    <message>
        <source>“%1” was not imported: %2.</source>
        <translation>„%1“ wurde nicht importiert: %2.</translation>
    </message>
    <message>
        <source>“%1” was imported.</source>
        <translation>„%1“ wurde importiert.</translation>
    </message>
    <message>
        <source>Imported: %1</source>
        <translation>Importiert: %1</translation>
    </message>
    <message>
        <source>“%1” was not imported. Your mappings (%2) cannot be added to: %3.</source>
        <translation>„%1“ wurde nicht importiert. Zu Ihren Belegungen (%2) kann nichts hinzukommen: %3.</translation>
    </message>
    <message>
        <source>“%1” was not imported: these programs have mappings of their own here: %2.</source>
        <translation>„%1“ wurde nicht importiert: Diese Programme haben hier eigene Belegungen: %2.</translation>
    </message>
    <message>
        <source>Imported, each for one program: %1</source>
        <translation>Importiert, je für ein Programm: %1</translation>
    </message>
    <message>
        <source>Imported, each for one program: %1. These keep the mappings that they have here: %2</source>
        <translation>Importiert, je für ein Programm: %1. Diese behalten die Belegungen, die sie hier haben: %2</translation>
    </message>
    <message>
        <source>What was switched off here is in the history: %1</source>
        <translation>Was hier abgeschaltet war, steht bei den früheren Fassungen: %1</translation>
    </message>
    <message>
        <source>They are kept, but cannot act in this session, which does not tell which program is in front</source>
        <translation>Sie werden aufgehoben, können aber in dieser Sitzung nicht gelten, die nicht verrät, welches Programm vorn ist</translation>
    </message>
</context>
<context>
    <name>KeyNames</name>
    <message>
        <source>clr</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Ctrl</source>
        <translation>Strg</translation>
    </message>
    <message>
        <source>Alt</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Esc</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>PgUp</source>
        <translation>Bild↑</translation>
    </message>
    <message>
        <source>PgDn</source>
        <translation>Bild↓</translation>
    </message>
    <message>
        <source>end</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>home</source>
        <translation>Pos1</translation>
    </message>
    <message>
        <source>PrtScn</source>
        <translation>Druck</translation>
    </message>
    <message>
        <source>ins</source>
        <translation>Einfg</translation>
    </message>
    <message>
        <source>del</source>
        <translation>Entf</translation>
    </message>
    <message>
        <source>Win</source>
        <translation>Win</translation>
    </message>
    <message>
        <source>NumL</source>
        <translation>Num</translation>
    </message>
</context>
<context>
    <name>Layer</name>
    <message>
        <source>Normal</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>Shift 1</source>
        <translation>Shift 1</translation>
    </message>
    <message>
        <source>Shift 2</source>
        <translation>Shift 2</translation>
    </message>
</context>
<context>
    <name>LibraryLabels</name>
    <message>
        <source>1 frame</source>
        <translation>1 Bild</translation>
    </message>
    <message>
        <source>1 star</source>
        <translation>1 Stern</translation>
    </message>
    <message>
        <source>10 s ahead</source>
        <translation>10 s vor</translation>
    </message>
    <message>
        <source>10 s back</source>
        <translation>10 s zurück</translation>
    </message>
    <message>
        <source>100 %</source>
        <translation>100 %</translation>
    </message>
    <message>
        <source>100 percent</source>
        <translation>100 %</translation>
    </message>
    <message>
        <source>3 s &lt;</source>
        <translation>3 s &lt;</translation>
    </message>
    <message>
        <source>3 s &gt;</source>
        <translation>3 s &gt;</translation>
    </message>
    <message>
        <source>3 stars</source>
        <translation>3 Sterne</translation>
    </message>
    <message>
        <source>5 stars</source>
        <translation>5 Sterne</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Add edit</source>
        <translation>Schnitt</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Again</source>
        <translation>Nochmal</translation>
    </message>
    <message>
        <source>Ahead</source>
        <translation>Voraus</translation>
    </message>
    <message>
        <source>Align</source>
        <translation>Richten</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alles</translation>
    </message>
    <message>
        <source>Anchor</source>
        <translation>Anker</translation>
    </message>
    <message>
        <source>App 1</source>
        <translation>App 1</translation>
    </message>
    <message>
        <source>App 2</source>
        <translation>App 2</translation>
    </message>
    <message>
        <source>App 3</source>
        <translation>App 3</translation>
    </message>
    <message>
        <source>Apps</source>
        <translation>Apps</translation>
    </message>
    <message>
        <source>Arc</source>
        <translation>Bogen</translation>
    </message>
    <message>
        <source>Arrow</source>
        <translation>Pfeil</translation>
    </message>
    <message>
        <source>As block</source>
        <translation>Block</translation>
    </message>
    <message>
        <source>Audio</source>
        <translation>Audio</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>Auto layout</source>
        <translation>Layout</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Backward</source>
        <translation>Rückwärts</translation>
    </message>
    <message>
        <source>Before/after</source>
        <translation>Vor/nach</translation>
    </message>
    <message>
        <source>Bell</source>
        <translation>Glocke</translation>
    </message>
    <message>
        <source>Bevel</source>
        <translation>Fase</translation>
    </message>
    <message>
        <source>Black screen</source>
        <translation>Schwarz</translation>
    </message>
    <message>
        <source>Blade</source>
        <translation>Klinge</translation>
    </message>
    <message>
        <source>Block</source>
        <translation>Block</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Fett</translation>
    </message>
    <message>
        <source>Bongo hi</source>
        <translation>Bongo</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>Unten</translation>
    </message>
    <message>
        <source>Break</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Browse/focus</source>
        <translation>Lesemodus</translation>
    </message>
    <message>
        <source>Brush</source>
        <translation>Pinsel</translation>
    </message>
    <message>
        <source>Brush larger</source>
        <translation>Pinsel +</translation>
    </message>
    <message>
        <source>Brush smaller</source>
        <translation>Pinsel -</translation>
    </message>
    <message>
        <source>Build</source>
        <translation>Bauen</translation>
    </message>
    <message>
        <source>Bullets</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>Button</source>
        <translation>Knopf</translation>
    </message>
    <message>
        <source>CC 102</source>
        <translation>CC 102</translation>
    </message>
    <message>
        <source>CC 103</source>
        <translation>CC 103</translation>
    </message>
    <message>
        <source>CC 104</source>
        <translation>CC 104</translation>
    </message>
    <message>
        <source>CC 105</source>
        <translation>CC 105</translation>
    </message>
    <message>
        <source>CC 21</source>
        <translation>CC 21</translation>
    </message>
    <message>
        <source>CC 22</source>
        <translation>CC 22</translation>
    </message>
    <message>
        <source>CC 23</source>
        <translation>CC 23</translation>
    </message>
    <message>
        <source>CC 24</source>
        <translation>CC 24</translation>
    </message>
    <message>
        <source>CC 25</source>
        <translation>CC 25</translation>
    </message>
    <message>
        <source>CC 26</source>
        <translation>CC 26</translation>
    </message>
    <message>
        <source>CC 27</source>
        <translation>CC 27</translation>
    </message>
    <message>
        <source>CC 80</source>
        <translation>CC 80</translation>
    </message>
    <message>
        <source>CC 81</source>
        <translation>CC 81</translation>
    </message>
    <message>
        <source>CC 82</source>
        <translation>CC 82</translation>
    </message>
    <message>
        <source>CC 83</source>
        <translation>CC 83</translation>
    </message>
    <message>
        <source>CC 85</source>
        <translation>CC 85</translation>
    </message>
    <message>
        <source>CC 86</source>
        <translation>CC 86</translation>
    </message>
    <message>
        <source>CC 87</source>
        <translation>CC 87</translation>
    </message>
    <message>
        <source>CC 89</source>
        <translation>CC 89</translation>
    </message>
    <message>
        <source>Calculator</source>
        <translation>Rechner</translation>
    </message>
    <message>
        <source>Calendar</source>
        <translation>Kalender</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbruch</translation>
    </message>
    <message>
        <source>Canvas</source>
        <translation>Leinwand</translation>
    </message>
    <message>
        <source>Captions</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>Mitte</translation>
    </message>
    <message>
        <source>Change</source>
        <translation>Ändern</translation>
    </message>
    <message>
        <source>Chart</source>
        <translation>Diagramm</translation>
    </message>
    <message>
        <source>Chat</source>
        <translation>Chat</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>Abrufen</translation>
    </message>
    <message>
        <source>China</source>
        <translation>China</translation>
    </message>
    <message>
        <source>Circle</source>
        <translation>Kreis</translation>
    </message>
    <message>
        <source>Clap</source>
        <translation>Clap</translation>
    </message>
    <message>
        <source>Classes</source>
        <translation>Klassen</translation>
    </message>
    <message>
        <source>Claves</source>
        <translation>Claves</translation>
    </message>
    <message>
        <source>Clean</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Click</source>
        <translation>Klick</translation>
    </message>
    <message>
        <source>Clip end</source>
        <translation>Clipende</translation>
    </message>
    <message>
        <source>Clone</source>
        <translation>Klonen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Zu</translation>
    </message>
    <message>
        <source>Close tab</source>
        <translation>Tab zu</translation>
    </message>
    <message>
        <source>Close window</source>
        <translation>Fenster zu</translation>
    </message>
    <message>
        <source>Closed hat</source>
        <translation>Hi-Hat zu</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Color filter</source>
        <translation>Farbfilter</translation>
    </message>
    <message>
        <source>Column</source>
        <translation>Spalte</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>Notiz</translation>
    </message>
    <message>
        <source>Commit</source>
        <translation>Commit</translation>
    </message>
    <message>
        <source>Component</source>
        <translation>Teil</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Conga hi</source>
        <translation>Conga</translation>
    </message>
    <message>
        <source>Contact</source>
        <translation>Kontakt</translation>
    </message>
    <message>
        <source>Contrast</source>
        <translation>Kontrast</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Cowbell</source>
        <translation>Cowbell</translation>
    </message>
    <message>
        <source>Crash</source>
        <translation>Crash</translation>
    </message>
    <message>
        <source>Crash 2</source>
        <translation>Crash 2</translation>
    </message>
    <message>
        <source>Crop</source>
        <translation>Schnitt</translation>
    </message>
    <message>
        <source>Curves</source>
        <translation>Kurven</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Schnitt</translation>
    </message>
    <message>
        <source>Cut clip</source>
        <translation>Clip teilen</translation>
    </message>
    <message>
        <source>Cut line</source>
        <translation>Zeile weg</translation>
    </message>
    <message>
        <source>Cycle</source>
        <translation>Zyklus</translation>
    </message>
    <message>
        <source>Darker</source>
        <translation>Dunkler</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>Debuggen</translation>
    </message>
    <message>
        <source>Declaration</source>
        <translation>Deklaration</translation>
    </message>
    <message>
        <source>Definition</source>
        <translation>Definition</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Denser</source>
        <translation>Dichter</translation>
    </message>
    <message>
        <source>Deselect</source>
        <translation>Abwählen</translation>
    </message>
    <message>
        <source>Desk left</source>
        <translation>Desktop &lt;</translation>
    </message>
    <message>
        <source>Desk right</source>
        <translation>Desktop &gt;</translation>
    </message>
    <message>
        <source>Desktop</source>
        <translation>Desktop</translation>
    </message>
    <message>
        <source>Dev tools</source>
        <translation>Dev-Tools</translation>
    </message>
    <message>
        <source>Develop</source>
        <translation>Entwickeln</translation>
    </message>
    <message>
        <source>Dictate</source>
        <translation>Diktat</translation>
    </message>
    <message>
        <source>Direct select</source>
        <translation>Direktwahl</translation>
    </message>
    <message>
        <source>Double</source>
        <translation>Doppelt</translation>
    </message>
    <message>
        <source>Draw</source>
        <translation>Zeichnen</translation>
    </message>
    <message>
        <source>Draw mode</source>
        <translation>Zeichnen</translation>
    </message>
    <message>
        <source>Ease</source>
        <translation>Glätten</translation>
    </message>
    <message>
        <source>Edges</source>
        <translation>Kanten</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Edit cell</source>
        <translation>Zelle</translation>
    </message>
    <message>
        <source>Edit nodes</source>
        <translation>Knoten</translation>
    </message>
    <message>
        <source>Elements</source>
        <translation>Elemente</translation>
    </message>
    <message>
        <source>Emoji</source>
        <translation>Emoji</translation>
    </message>
    <message>
        <source>End desk</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>End show</source>
        <translation>Show-Ende</translation>
    </message>
    <message>
        <source>Erase</source>
        <translation>Radieren</translation>
    </message>
    <message>
        <source>Erase mode</source>
        <translation>Radieren</translation>
    </message>
    <message>
        <source>Eraser</source>
        <translation>Radierer</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>Termin</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>Extents</source>
        <translation>Alles</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>Auslagern</translation>
    </message>
    <message>
        <source>Extrude</source>
        <translation>Extrusion</translation>
    </message>
    <message>
        <source>Faces</source>
        <translation>Flächen</translation>
    </message>
    <message>
        <source>Fade</source>
        <translation>Blende</translation>
    </message>
    <message>
        <source>Faster</source>
        <translation>Schneller</translation>
    </message>
    <message>
        <source>Field</source>
        <translation>Feld</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>Fill</source>
        <translation>Füllen</translation>
    </message>
    <message>
        <source>Fill down</source>
        <translation>Nach unten</translation>
    </message>
    <message>
        <source>Fill right</source>
        <translation>Nach rechts</translation>
    </message>
    <message>
        <source>Fillet</source>
        <translation>Abrunden</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>First</source>
        <translation>Erste</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>Einpassen</translation>
    </message>
    <message>
        <source>Focus</source>
        <translation>Fokus</translation>
    </message>
    <message>
        <source>Font larger</source>
        <translation>Schrift +</translation>
    </message>
    <message>
        <source>Font smaller</source>
        <translation>Schrift -</translation>
    </message>
    <message>
        <source>Force</source>
        <translation>Alles neu</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Frame</source>
        <translation>Rahmen</translation>
    </message>
    <message>
        <source>From here</source>
        <translation>Ab hier</translation>
    </message>
    <message>
        <source>Front</source>
        <translation>Vorn</translation>
    </message>
    <message>
        <source>Front view</source>
        <translation>Vorn</translation>
    </message>
    <message>
        <source>Full</source>
        <translation>Vollbild</translation>
    </message>
    <message>
        <source>Full screen</source>
        <translation>Vollbild</translation>
    </message>
    <message>
        <source>Function</source>
        <translation>Funktion</translation>
    </message>
    <message>
        <source>Gallery</source>
        <translation>Galerie</translation>
    </message>
    <message>
        <source>Git</source>
        <translation>Git</translation>
    </message>
    <message>
        <source>Give up</source>
        <translation>Abgeben</translation>
    </message>
    <message>
        <source>Glue</source>
        <translation>Kleben</translation>
    </message>
    <message>
        <source>Go line</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>Go to</source>
        <translation>Gehe zu</translation>
    </message>
    <message>
        <source>Grab</source>
        <translation>Greifen</translation>
    </message>
    <message>
        <source>Grid</source>
        <translation>Raster</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>Gruppe</translation>
    </message>
    <message>
        <source>Guide</source>
        <translation>Marke</translation>
    </message>
    <message>
        <source>Harder</source>
        <translation>Härter</translation>
    </message>
    <message>
        <source>Heading</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Heading 1</source>
        <translation>Titel 1</translation>
    </message>
    <message>
        <source>Heading 2</source>
        <translation>Titel 2</translation>
    </message>
    <message>
        <source>Heading 3</source>
        <translation>Titel 3</translation>
    </message>
    <message>
        <source>Heal</source>
        <translation>Heilen</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Weg</translation>
    </message>
    <message>
        <source>Hide window</source>
        <translation>Ausblenden</translation>
    </message>
    <message>
        <source>High tom</source>
        <translation>Tom hoch</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>Hold</source>
        <translation>Halten</translation>
    </message>
    <message>
        <source>Hole</source>
        <translation>Bohrung</translation>
    </message>
    <message>
        <source>Hue</source>
        <translation>Farbton</translation>
    </message>
    <message>
        <source>In point</source>
        <translation>In-Punkt</translation>
    </message>
    <message>
        <source>Insert</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Inset</source>
        <translation>Einsatz</translation>
    </message>
    <message>
        <source>Into</source>
        <translation>Hinein</translation>
    </message>
    <message>
        <source>Invert</source>
        <translation>Invers</translation>
    </message>
    <message>
        <source>Invite</source>
        <translation>Gäste</translation>
    </message>
    <message>
        <source>Isometric</source>
        <translation>Isometrie</translation>
    </message>
    <message>
        <source>Italic</source>
        <translation>Kursiv</translation>
    </message>
    <message>
        <source>Join</source>
        <translation>Fügen</translation>
    </message>
    <message>
        <source>Joint</source>
        <translation>Gelenk</translation>
    </message>
    <message>
        <source>Keyboard</source>
        <translation>Tastatur</translation>
    </message>
    <message>
        <source>Keyframes</source>
        <translation>Keyframes</translation>
    </message>
    <message>
        <source>Kick</source>
        <translation>Kick</translation>
    </message>
    <message>
        <source>Kick 2</source>
        <translation>Kick 2</translation>
    </message>
    <message>
        <source>Knob 16</source>
        <translation>Knopf 16</translation>
    </message>
    <message>
        <source>Knob 17</source>
        <translation>Knopf 17</translation>
    </message>
    <message>
        <source>Knob 18</source>
        <translation>Knopf 18</translation>
    </message>
    <message>
        <source>Knob 19</source>
        <translation>Knopf 19</translation>
    </message>
    <message>
        <source>Knob 20</source>
        <translation>Knopf 20</translation>
    </message>
    <message>
        <source>Knob 21</source>
        <translation>Knopf 21</translation>
    </message>
    <message>
        <source>Knob 22</source>
        <translation>Knopf 22</translation>
    </message>
    <message>
        <source>Knob 23</source>
        <translation>Knopf 23</translation>
    </message>
    <message>
        <source>Knob 24</source>
        <translation>Knopf 24</translation>
    </message>
    <message>
        <source>Label</source>
        <translation>Marke</translation>
    </message>
    <message>
        <source>Landmark</source>
        <translation>Marke</translation>
    </message>
    <message>
        <source>Lanes</source>
        <translation>Spuren</translation>
    </message>
    <message>
        <source>Larger</source>
        <translation>Größer</translation>
    </message>
    <message>
        <source>Laser</source>
        <translation>Laser</translation>
    </message>
    <message>
        <source>Lasso</source>
        <translation>Lasso</translation>
    </message>
    <message>
        <source>Last</source>
        <translation>Letzte</translation>
    </message>
    <message>
        <source>Last slide</source>
        <translation>Letzte</translation>
    </message>
    <message>
        <source>Layer down</source>
        <translation>Ebene -</translation>
    </message>
    <message>
        <source>Layer up</source>
        <translation>Ebene +</translation>
    </message>
    <message>
        <source>Leave</source>
        <translation>Verlassen</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>Lens off</source>
        <translation>Lupe aus</translation>
    </message>
    <message>
        <source>Letters</source>
        <translation>Zeichen</translation>
    </message>
    <message>
        <source>Levels</source>
        <translation>Tonwert</translation>
    </message>
    <message>
        <source>Lighter</source>
        <translation>Heller</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Linie</translation>
    </message>
    <message>
        <source>Line down</source>
        <translation>Zeile runter</translation>
    </message>
    <message>
        <source>Line up</source>
        <translation>Zeile hoch</translation>
    </message>
    <message>
        <source>Link</source>
        <translation>Link</translation>
    </message>
    <message>
        <source>List</source>
        <translation>Liste</translation>
    </message>
    <message>
        <source>Lock</source>
        <translation>Sperre</translation>
    </message>
    <message>
        <source>Look</source>
        <translation>Ansehen</translation>
    </message>
    <message>
        <source>Loop</source>
        <translation>Schleife</translation>
    </message>
    <message>
        <source>Loop cut</source>
        <translation>Ring</translation>
    </message>
    <message>
        <source>Louder</source>
        <translation>Lauter</translation>
    </message>
    <message>
        <source>Loupe</source>
        <translation>Lupe</translation>
    </message>
    <message>
        <source>Low tom</source>
        <translation>Tom tief</translation>
    </message>
    <message>
        <source>Lower</source>
        <translation>Senken</translation>
    </message>
    <message>
        <source>Magnify less</source>
        <translation>Lupe -</translation>
    </message>
    <message>
        <source>Magnify more</source>
        <translation>Lupe +</translation>
    </message>
    <message>
        <source>Mail</source>
        <translation>Mail</translation>
    </message>
    <message>
        <source>Mark</source>
        <translation>Merken</translation>
    </message>
    <message>
        <source>Marker</source>
        <translation>Marker</translation>
    </message>
    <message>
        <source>Mask</source>
        <translation>Maske</translation>
    </message>
    <message>
        <source>Maximize</source>
        <translation>Maximieren</translation>
    </message>
    <message>
        <source>Measure</source>
        <translation>Messen</translation>
    </message>
    <message>
        <source>Meeting</source>
        <translation>Meeting</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>Merge</source>
        <translation>Vereinen</translation>
    </message>
    <message>
        <source>Middle</source>
        <translation>Mitte</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimieren</translation>
    </message>
    <message>
        <source>Minus</source>
        <translation>Minus</translation>
    </message>
    <message>
        <source>Mirror view</source>
        <translation>Spiegeln</translation>
    </message>
    <message>
        <source>Mixer</source>
        <translation>Mixer</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Bewegen</translation>
    </message>
    <message>
        <source>Move back</source>
        <translation>Fenster &lt;</translation>
    </message>
    <message>
        <source>Move left</source>
        <translation>Links &lt;</translation>
    </message>
    <message>
        <source>Move on</source>
        <translation>Fenster &gt;</translation>
    </message>
    <message>
        <source>Move right</source>
        <translation>Rechts &gt;</translation>
    </message>
    <message>
        <source>Mute</source>
        <translation>Stumm</translation>
    </message>
    <message>
        <source>Mute all</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>Mute me</source>
        <translation>Stumm</translation>
    </message>
    <message>
        <source>Narrator</source>
        <translation>Sprecher</translation>
    </message>
    <message>
        <source>Navigator</source>
        <translation>Navigator</translation>
    </message>
    <message>
        <source>Nest</source>
        <translation>Nest</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>New desk</source>
        <translation>Desktop neu</translation>
    </message>
    <message>
        <source>New message</source>
        <translation>Neue Mail</translation>
    </message>
    <message>
        <source>New page</source>
        <translation>Neue Seite</translation>
    </message>
    <message>
        <source>New slide</source>
        <translation>Neue Folie</translation>
    </message>
    <message>
        <source>New tab</source>
        <translation>Neuer Tab</translation>
    </message>
    <message>
        <source>New track</source>
        <translation>Neue Spur</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Nächstes</translation>
    </message>
    <message>
        <source>Next field</source>
        <translation>Feld &gt;</translation>
    </message>
    <message>
        <source>Next frame</source>
        <translation>Bild &gt;</translation>
    </message>
    <message>
        <source>Next key</source>
        <translation>Key &gt;</translation>
    </message>
    <message>
        <source>Next layout</source>
        <translation>Layout &gt;</translation>
    </message>
    <message>
        <source>Next mark</source>
        <translation>Marke &gt;</translation>
    </message>
    <message>
        <source>Next people</source>
        <translation>Leute &gt;</translation>
    </message>
    <message>
        <source>Next sheet</source>
        <translation>Blatt &gt;</translation>
    </message>
    <message>
        <source>Next slide</source>
        <translation>Folie &gt;</translation>
    </message>
    <message>
        <source>Next slider</source>
        <translation>Regler &gt;</translation>
    </message>
    <message>
        <source>Next tab</source>
        <translation>Tab &gt;</translation>
    </message>
    <message>
        <source>Normal</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>Notizen</translation>
    </message>
    <message>
        <source>Numbers</source>
        <translation>Nummern</translation>
    </message>
    <message>
        <source>Object</source>
        <translation>Objekt</translation>
    </message>
    <message>
        <source>Object snap</source>
        <translation>Objektfang</translation>
    </message>
    <message>
        <source>Offset</source>
        <translation>Versatz</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>Deckkraft</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Open file</source>
        <translation>Datei auf</translation>
    </message>
    <message>
        <source>Open hat</source>
        <translation>Hi-Hat auf</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Orbit</source>
        <translation>Orbit</translation>
    </message>
    <message>
        <source>Ortho</source>
        <translation>Ortho</translation>
    </message>
    <message>
        <source>Other view</source>
        <translation>Andere</translation>
    </message>
    <message>
        <source>Out</source>
        <translation>Heraus</translation>
    </message>
    <message>
        <source>Out point</source>
        <translation>Out-Punkt</translation>
    </message>
    <message>
        <source>Outline</source>
        <translation>Umriss</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Ausgabe</translation>
    </message>
    <message>
        <source>Oval</source>
        <translation>Oval</translation>
    </message>
    <message>
        <source>Over</source>
        <translation>Darüber</translation>
    </message>
    <message>
        <source>Overlap</source>
        <translation>Schnitt</translation>
    </message>
    <message>
        <source>Overview</source>
        <translation>Übersicht</translation>
    </message>
    <message>
        <source>Page down</source>
        <translation>Bild ab</translation>
    </message>
    <message>
        <source>Page up</source>
        <translation>Bild auf</translation>
    </message>
    <message>
        <source>Page width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Paint</source>
        <translation>Malen</translation>
    </message>
    <message>
        <source>Paintbrush</source>
        <translation>Pinsel</translation>
    </message>
    <message>
        <source>Palettes</source>
        <translation>Palette</translation>
    </message>
    <message>
        <source>Pan</source>
        <translation>Schwenken</translation>
    </message>
    <message>
        <source>Panels</source>
        <translation>Paneele</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Pause share</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Pedal</source>
        <translation>Pedal</translation>
    </message>
    <message>
        <source>Peek</source>
        <translation>Blick</translation>
    </message>
    <message>
        <source>Pen</source>
        <translation>Stift</translation>
    </message>
    <message>
        <source>People</source>
        <translation>Leute</translation>
    </message>
    <message>
        <source>Photo</source>
        <translation>Foto</translation>
    </message>
    <message>
        <source>Piano roll</source>
        <translation>Pianorolle</translation>
    </message>
    <message>
        <source>Pick</source>
        <translation>Markieren</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Plain</source>
        <translation>Schlicht</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Playlist</source>
        <translation>Liste</translation>
    </message>
    <message>
        <source>Polar</source>
        <translation>Polar</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>Press pull</source>
        <translation>Klicken/Zieh.</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Previous</source>
        <translation>Voriges</translation>
    </message>
    <message>
        <source>Previous tab</source>
        <translation>Tab &lt;</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>Prior</source>
        <translation>Voriges</translation>
    </message>
    <message>
        <source>Prior frame</source>
        <translation>Bild &lt;</translation>
    </message>
    <message>
        <source>Prior key</source>
        <translation>Key &lt;</translation>
    </message>
    <message>
        <source>Prior layout</source>
        <translation>Layout &lt;</translation>
    </message>
    <message>
        <source>Prior mark</source>
        <translation>Marke &lt;</translation>
    </message>
    <message>
        <source>Prior people</source>
        <translation>Leute &lt;</translation>
    </message>
    <message>
        <source>Prior sheet</source>
        <translation>Blatt &lt;</translation>
    </message>
    <message>
        <source>Prior slide</source>
        <translation>Folie &lt;</translation>
    </message>
    <message>
        <source>Prior slider</source>
        <translation>Regler &lt;</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>Projekt</translation>
    </message>
    <message>
        <source>Push</source>
        <translation>Push</translation>
    </message>
    <message>
        <source>Push/pull</source>
        <translation>Drücken</translation>
    </message>
    <message>
        <source>Quantize</source>
        <translation>Quantisieren</translation>
    </message>
    <message>
        <source>Quick action</source>
        <translation>Schnell</translation>
    </message>
    <message>
        <source>Quick fix</source>
        <translation>Schnellfix</translation>
    </message>
    <message>
        <source>Quieter</source>
        <translation>Leiser</translation>
    </message>
    <message>
        <source>Raise</source>
        <translation>Heben</translation>
    </message>
    <message>
        <source>Raise hand</source>
        <translation>Melden</translation>
    </message>
    <message>
        <source>Range</source>
        <translation>Bereich</translation>
    </message>
    <message>
        <source>Razor</source>
        <translation>Schere</translation>
    </message>
    <message>
        <source>Read</source>
        <translation>Gelesen</translation>
    </message>
    <message>
        <source>Read line</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>Read mode</source>
        <translation>Lesen</translation>
    </message>
    <message>
        <source>Read on</source>
        <translation>Vorlesen</translation>
    </message>
    <message>
        <source>Read window</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>Rebuild</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Receive</source>
        <translation>Abholen</translation>
    </message>
    <message>
        <source>Recent files</source>
        <translation>Zuletzt</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>Rectangle</source>
        <translation>Rechteck</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wieder</translation>
    </message>
    <message>
        <source>References</source>
        <translation>Verweise</translation>
    </message>
    <message>
        <source>Reformat</source>
        <translation>Formatieren</translation>
    </message>
    <message>
        <source>Region</source>
        <translation>Region</translation>
    </message>
    <message>
        <source>Reject</source>
        <translation>Ablehnen</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Neu laden</translation>
    </message>
    <message>
        <source>Remote</source>
        <translation>Fern</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Render</source>
        <translation>Rendern</translation>
    </message>
    <message>
        <source>Reopen</source>
        <translation>Wieder</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>Nochmal</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>Reply</source>
        <translation>Antwort</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Kleiner</translation>
    </message>
    <message>
        <source>Ride</source>
        <translation>Ride</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Rechts</translation>
    </message>
    <message>
        <source>Right view</source>
        <translation>Rechts</translation>
    </message>
    <message>
        <source>Rim</source>
        <translation>Rim</translation>
    </message>
    <message>
        <source>Ripple</source>
        <translation>Ripple</translation>
    </message>
    <message>
        <source>Ripple delete</source>
        <translation>Ripple weg</translation>
    </message>
    <message>
        <source>Rotate</source>
        <translation>Drehen</translation>
    </message>
    <message>
        <source>Rotate +</source>
        <translation>Drehen +</translation>
    </message>
    <message>
        <source>Rotate -</source>
        <translation>Drehen -</translation>
    </message>
    <message>
        <source>Rotation</source>
        <translation>Drehung</translation>
    </message>
    <message>
        <source>Row</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>Run</source>
        <translation>Starten</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Save all</source>
        <translation>Alle sichern</translation>
    </message>
    <message>
        <source>Scale</source>
        <translation>Skalieren</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Section</source>
        <translation>Absatz</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Auswahl</translation>
    </message>
    <message>
        <source>Selection</source>
        <translation>Auswahl</translation>
    </message>
    <message>
        <source>Send</source>
        <translation>Senden</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Shading</source>
        <translation>Schattierung</translation>
    </message>
    <message>
        <source>Shaker</source>
        <translation>Shaker</translation>
    </message>
    <message>
        <source>Shape</source>
        <translation>Form</translation>
    </message>
    <message>
        <source>Shape builder</source>
        <translation>Formwerkzeug</translation>
    </message>
    <message>
        <source>Share</source>
        <translation>Teilen</translation>
    </message>
    <message>
        <source>Side bar</source>
        <translation>Leiste</translation>
    </message>
    <message>
        <source>Silence</source>
        <translation>Stille</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Slice</source>
        <translation>Schnitt</translation>
    </message>
    <message>
        <source>Slower</source>
        <translation>Langsamer</translation>
    </message>
    <message>
        <source>Smaller</source>
        <translation>Kleiner</translation>
    </message>
    <message>
        <source>Snap</source>
        <translation>Fang</translation>
    </message>
    <message>
        <source>Snap &lt;</source>
        <translation>Fang &lt;</translation>
    </message>
    <message>
        <source>Snap &gt;</source>
        <translation>Fang &gt;</translation>
    </message>
    <message>
        <source>Snap left</source>
        <translation>Nach links</translation>
    </message>
    <message>
        <source>Snap right</source>
        <translation>Nach rechts</translation>
    </message>
    <message>
        <source>Snare</source>
        <translation>Snare</translation>
    </message>
    <message>
        <source>Snare 2</source>
        <translation>Snare 2</translation>
    </message>
    <message>
        <source>Snip</source>
        <translation>Foto</translation>
    </message>
    <message>
        <source>Soft</source>
        <translation>Leise</translation>
    </message>
    <message>
        <source>Softer</source>
        <translation>Weicher</translation>
    </message>
    <message>
        <source>Solid</source>
        <translation>Fläche</translation>
    </message>
    <message>
        <source>Solution</source>
        <translation>Projekt</translation>
    </message>
    <message>
        <source>Song/pattern</source>
        <translation>Song/Muster</translation>
    </message>
    <message>
        <source>Speaker</source>
        <translation>Sprecher</translation>
    </message>
    <message>
        <source>Speech</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>Speed</source>
        <translation>Tempo</translation>
    </message>
    <message>
        <source>Spelling</source>
        <translation>Prüfen</translation>
    </message>
    <message>
        <source>Splash</source>
        <translation>Splash</translation>
    </message>
    <message>
        <source>Split</source>
        <translation>Teilen</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Styles</source>
        <translation>Stile</translation>
    </message>
    <message>
        <source>Subtitle</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Sum</source>
        <translation>Summe</translation>
    </message>
    <message>
        <source>Sustain</source>
        <translation>Sustain</translation>
    </message>
    <message>
        <source>Swap</source>
        <translation>Tauschen</translation>
    </message>
    <message>
        <source>Swap colors</source>
        <translation>Tauschen</translation>
    </message>
    <message>
        <source>Switch</source>
        <translation>Sicht</translation>
    </message>
    <message>
        <source>Switch app</source>
        <translation>Wechseln</translation>
    </message>
    <message>
        <source>Symbol</source>
        <translation>Symbol</translation>
    </message>
    <message>
        <source>Table</source>
        <translation>Tabelle</translation>
    </message>
    <message>
        <source>Talk</source>
        <translation>Sprechen</translation>
    </message>
    <message>
        <source>Tape</source>
        <translation>Maßband</translation>
    </message>
    <message>
        <source>Task</source>
        <translation>Aufgabe</translation>
    </message>
    <message>
        <source>Tasks</source>
        <translation>Aufgaben</translation>
    </message>
    <message>
        <source>Terminal</source>
        <translation>Terminal</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Thinner</source>
        <translation>Dünner</translation>
    </message>
    <message>
        <source>Tile left</source>
        <translation>Nach links</translation>
    </message>
    <message>
        <source>Tile right</source>
        <translation>Nach rechts</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>To back</source>
        <translation>Hinten</translation>
    </message>
    <message>
        <source>To end</source>
        <translation>Ans Ende</translation>
    </message>
    <message>
        <source>To front</source>
        <translation>Vorn</translation>
    </message>
    <message>
        <source>To path</source>
        <translation>In Pfad</translation>
    </message>
    <message>
        <source>To start</source>
        <translation>Zum Anfang</translation>
    </message>
    <message>
        <source>Toolbar</source>
        <translation>Leiste</translation>
    </message>
    <message>
        <source>Toolbox</source>
        <translation>Kasten</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>Oben</translation>
    </message>
    <message>
        <source>Top view</source>
        <translation>Oben</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Verfolgen</translation>
    </message>
    <message>
        <source>Transform</source>
        <translation>Formen</translation>
    </message>
    <message>
        <source>Triangle</source>
        <translation>Triangel</translation>
    </message>
    <message>
        <source>Trim</source>
        <translation>Trimmen</translation>
    </message>
    <message>
        <source>Trim in</source>
        <translation>Trimmen</translation>
    </message>
    <message>
        <source>Trim out</source>
        <translation>Trimmen</translation>
    </message>
    <message>
        <source>Turn</source>
        <translation>Drehen</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Underline</source>
        <translation>Unterstr.</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Unflag</source>
        <translation>Ohne Flagge</translation>
    </message>
    <message>
        <source>Ungroup</source>
        <translation>Auflösen</translation>
    </message>
    <message>
        <source>Union</source>
        <translation>Vereinen</translation>
    </message>
    <message>
        <source>Unread</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Unwrap</source>
        <translation>UV</translation>
    </message>
    <message>
        <source>Usages</source>
        <translation>Verwendet</translation>
    </message>
    <message>
        <source>View box</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Voice</source>
        <translation>Stimme</translation>
    </message>
    <message>
        <source>White screen</source>
        <translation>Weiß</translation>
    </message>
    <message>
        <source>Whole page</source>
        <translation>Ganzseite</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>Words</source>
        <translation>Wörter</translation>
    </message>
    <message>
        <source>X-ray</source>
        <translation>Röntgen</translation>
    </message>
    <message>
        <source>Zone end</source>
        <translation>Zonenende</translation>
    </message>
    <message>
        <source>Zone start</source>
        <translation>Zonenstart</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>Größer</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>Kleiner</translation>
    </message>
    <message>
        <source>Zoom to fit</source>
        <translation>Einpassen</translation>
    </message>
</context>
<context>
    <name>LicenceDialog</name>
    <message>
        <source>Licences</source>
        <translation>Lizenzen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>ListInWords</name>
    <message>
        <source>… and %1 more</source>
        <extracomment>the end of a list of names or lines</extracomment>
        <translation>… und %1 weitere</translation>
    </message>
</context>
<context>
    <name>MapNotices</name>
    <message>
        <source>Keep</source>
        <translation>Behalten</translation>
    </message>
    <message>
        <source>Writes what the page shows as the mapping that the program starts with</source>
        <translation>Speichert, was die Seite zeigt, als die Belegung, mit der das Programm startet</translation>
    </message>
    <message>
        <source>Updating maps</source>
        <translation>Belegungen werden aktualisiert</translation>
    </message>
    <message>
        <source>New maps available!</source>
        <translation>Neue Belegungen verfügbar!</translation>
    </message>
    <message>
        <source>Your changes end with the program.</source>
        <translation>Ihre Änderungen enden mit dem Programm.</translation>
    </message>
    <message>
        <source>The knob&apos;s encoding ends with the program.</source>
        <translation>Die Knopfkodierung endet mit dem Programm.</translation>
    </message>
    <message>
        <source>All else is kept. What turning the knob sends (the controller&apos;s number and the encoding of &quot;Midi for Knob&quot;) is no part of a mapping that is read from a file</source>
        <translation>Alles andere bleibt. Was der Drehknopf beim Drehen sendet (Controllernummer und Kodierung von „Midi für Drehknopf“), gehört nicht zu einer gelesenen Belegung</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Takes back what was done last (Ctrl+Z)</source>
        <translation>Nimmt zurück, was zuletzt getan wurde (Strg+Z)</translation>
    </message>
</context>
<context>
    <name>MapPrinter</name>
    <message>
        <source>Print ZR Map</source>
        <translation>ZR-Belegung drucken</translation>
    </message>
    <message>
        <source>Veltrix map</source>
        <translation>Veltrix-Belegung</translation>
    </message>
    <message>
        <source>PDF files</source>
        <translation>PDF-Dateien</translation>
    </message>
</context>
<context>
    <name>MappingFileExchange</name>
    <message>
        <source>Export…</source>
        <translation>Exportieren …</translation>
    </message>
    <message>
        <source>Import…</source>
        <translation>Importieren …</translation>
    </message>
    <message>
        <source>“%1” was not exported: %2.</source>
        <translation>„%1“ wurde nicht exportiert: %2.</translation>
    </message>
    <message>
        <source>Export “%1”</source>
        <translation>„%1“ exportieren</translation>
    </message>
    <message>
        <source>Mappings (*.xml)</source>
        <translation>Belegungen (*.xml)</translation>
    </message>
    <message>
        <source>Import mappings</source>
        <translation>Belegungen importieren</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>MidiActions</name>
    <message>
        <source>Not Available</source>
        <translation>nicht verfügbar</translation>
    </message>
</context>
<context>
    <name>MidiMenu</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>MIDI</source>
        <translation>MIDI</translation>
    </message>
    <message>
        <source>Channel</source>
        <translation>Kanal</translation>
    </message>
    <message>
        <source>CC on move</source>
        <translation>CC: Drehen</translation>
    </message>
    <message>
        <source>Touch</source>
        <translation>Berühren</translation>
    </message>
    <message>
        <source>7Fh/01h</source>
        <translation>7Fh/01h</translation>
    </message>
    <message>
        <source>Each step to the left sends 127, each step to the right 1</source>
        <translation>Jeder Schritt nach links sendet 127, jeder nach rechts 1</translation>
    </message>
    <message>
        <source>03Fh/41h</source>
        <translation>03Fh/41h</translation>
    </message>
    <message>
        <source>Each step to the left sends 63, each step to the right 65</source>
        <translation>Jeder Schritt nach links sendet 63, jeder nach rechts 65</translation>
    </message>
    <message>
        <source>absolute</source>
        <translation>absolut</translation>
    </message>
    <message>
        <source>Turning counts from 0 to 127</source>
        <translation>Drehen zählt von 0 bis 127</translation>
    </message>
    <message>
        <source>CC on touch</source>
        <translation>CC: Berühren</translation>
    </message>
    <message>
        <source>A touch sends a control change</source>
        <translation>Eine Berührung sendet einen Controllerwert (CC)</translation>
    </message>
    <message>
        <source>Note on touch</source>
        <translation>Note: Berühren</translation>
    </message>
    <message>
        <source>A touch sends a note</source>
        <translation>Eine Berührung sendet eine Note</translation>
    </message>
    <message>
        <source>After Touch</source>
        <translation>Loslassen</translation>
    </message>
    <message>
        <source>Letting go sends a value too</source>
        <translation>Auch das Loslassen sendet einen Wert</translation>
    </message>
    <message>
        <source>%1, 0 to %2</source>
        <translation>%1, 0 bis %2</translation>
    </message>
    <message>
        <source>Controller that turning sends</source>
        <translation>Controller, den das Drehen sendet</translation>
    </message>
    <message>
        <source>Controller or note that a touch sends</source>
        <translation>Controller oder Note, die eine Berührung sendet</translation>
    </message>
    <message>
        <source>Value that a touch sends</source>
        <translation>Wert, den eine Berührung sendet</translation>
    </message>
    <message>
        <source>Value that letting go sends</source>
        <translation>Wert, den das Loslassen sendet</translation>
    </message>
    <message>
        <source>MIDI FOR KNOB</source>
        <translation>DREHKNOPF-MIDI</translation>
    </message>
    <message>
        <source>Closes the dialog</source>
        <translation>Schließt den Dialog</translation>
    </message>
</context>
<context>
    <name>NameLine</name>
    <message>
        <source>Mapping without a name</source>
        <translation>Belegung ohne Namen</translation>
    </message>
    <message>
        <source>%1, changed</source>
        <translation>%1, geändert</translation>
    </message>
    <message>
        <source>Knob: %1</source>
        <translation>Drehknopf: %1</translation>
    </message>
    <message>
        <source>The mapping in use, changed since it was chosen or saved</source>
        <translation>Die Belegung in Gebrauch, geändert seit sie gewählt oder gespeichert wurde</translation>
    </message>
    <message>
        <source>The mapping in use</source>
        <translation>Die Belegung in Gebrauch</translation>
    </message>
    <message>
        <source>Mapping in use: %1</source>
        <translation>Belegung in Gebrauch: %1</translation>
    </message>
</context>
<context>
    <name>Options</name>
    <message>
        <source>Play the script in FILE, then end. No window.</source>
        <translation>Das Skript in FILE abspielen, dann enden. Kein Fenster.</translation>
    </message>
    <message>
        <source>Play lines from standard input until it ends. No window.</source>
        <translation>Zeilen der Standardeingabe abspielen, bis sie endet. Kein Fenster.</translation>
    </message>
    <message>
        <source>Show the window also with --script or --stdin.</source>
        <translation>Das Fenster auch mit --script oder --stdin zeigen.</translation>
    </message>
    <message>
        <source>Stay plugged in after the end of the script or of standard input.</source>
        <translation>Nach dem Ende des Skripts oder der Eingabe eingesteckt bleiben.</translation>
    </message>
    <message>
        <source>Start with the cable out.</source>
        <translation>Mit gezogenem Kabel beginnen.</translation>
    </message>
    <message>
        <source>Publish the device as PATH instead of $XDG_RUNTIME_DIR/veltrix-simulator.</source>
        <translation>Das Gerät als PATH anbieten statt als $XDG_RUNTIME_DIR/veltrix-simulator.</translation>
    </message>
    <message>
        <source>Be at tcp:127.0.0.1:PORT instead, for programs on this computer (0: any free port).</source>
        <translation>Stattdessen unter tcp:127.0.0.1:PORT, für Programme dieses Rechners (0: ein freier Port).</translation>
    </message>
    <message>
        <source>Print &quot;sent NANOSECONDS REPORT&quot; (steady clock) for each report.</source>
        <translation>Für jede Meldung „sent NANOSEKUNDEN MELDUNG“ (stetige Uhr) ausgeben.</translation>
    </message>
    <message>
        <source>unexpected argument &quot;%1&quot;</source>
        <translation>unerwartete Angabe „%1“</translation>
    </message>
    <message>
        <source>--listen needs a port from 0 to 65535</source>
        <translation>--listen braucht einen Port von 0 bis 65535</translation>
    </message>
    <message>
        <source>--link and --listen exclude each other</source>
        <translation>--link und --listen schließen einander aus</translation>
    </message>
    <message>
        <source>--link needs a path</source>
        <translation>--link braucht einen Pfad</translation>
    </message>
    <message>
        <source>Usage: veltrix-simulator [options]

A virtual control surface: ten buttons and a touch knob at a pseudo-terminal or a local TCP port.
Start the program with --port and what is printed here, then use the device in the window.

Options:
</source>
        <translation>Aufruf: veltrix-simulator [Optionen]

Ein virtuelles Bediengerät: zehn Tasten und ein Drehknopf an einem Pseudo-Terminal oder einem lokalen TCP-Port.
Starten Sie das Programm mit --port und dem, was hier ausgegeben wird, und bedienen Sie das Gerät im Fenster.

Optionen:
</translation>
    </message>
    <message>
        <source>Show this help.</source>
        <translation>Diese Hilfe zeigen.</translation>
    </message>
    <message>
        <source>Show the version.</source>
        <translation>Die Version zeigen.</translation>
    </message>
    <message>
        <source>
Scripts and standard input have one event a line:
  BP3, BR3             button 3 down, up (0 to 9)
  KND, KNU, KNL, KNR   knob touched, let go, one step left, right
  12, -3               a count
  wait MS              do nothing for so many milliseconds
  plug, unplug         put the cable in, pull it out
  raw HEX              send these bytes
  # ...                a comment
The first report waits up to 3 s for a program to open the port. What happens to the port is
printed as &quot;plugged PORT&quot;, &quot;opened&quot;, &quot;closed&quot; and &quot;unplugged&quot;.

Status: 0 done, 1 the port cannot be made, 2 a mistake in the command line, the script or the
input (in a terminal, a mistake in the input is only reported), 128 + N ended by signal N.
</source>
        <translation>
Skripte und Standardeingabe haben ein Ereignis je Zeile:
  BP3, BR3             Taste 3 gedrückt, losgelassen (0 bis 9)
  KND, KNU, KNL, KNR   Drehknopf berührt, losgelassen, ein Schritt nach links, rechts
  12, -3               eine Anzahl
  wait MS              so viele Millisekunden nichts tun
  plug, unplug         das Kabel einstecken, herausziehen
  raw HEX              diese Bytes senden
  # ...                eine Bemerkung
Die erste Meldung wartet bis zu 3 s darauf, dass ein Programm den Port öffnet. Was mit dem Port geschieht,
wird als &quot;plugged PORT&quot;, &quot;opened&quot;, &quot;closed&quot; und &quot;unplugged&quot; ausgegeben.

Status: 0 fertig, 1 der Port lässt sich nicht einrichten, 2 ein Fehler in der Befehlszeile, dem Skript oder der
Eingabe (in einem Terminal wird ein Fehler in der Eingabe nur gemeldet), 128 + N durch Signal N beendet.
</translation>
    </message>
</context>
<context>
    <name>PageTexts</name>
    <message>
        <source>VELTRIX</source>
        <translation>VELTRIX</translation>
    </message>
    <message>
        <source>Knob and buttons settings.</source>
        <translation>Knopf und Tasten einstellen.</translation>
    </message>
    <message>
        <source>Knob sensitivity adjustment</source>
        <translation>Drehknopf-Empfindlichkeit</translation>
    </message>
    <message>
        <source>NORMAL</source>
        <translation>NORMAL</translation>
    </message>
    <message>
        <source>SHIFT 1</source>
        <translation>SHIFT 1</translation>
    </message>
    <message>
        <source>Slow</source>
        <translation>Langsam</translation>
    </message>
    <message>
        <source>Fast</source>
        <translation>Schnell</translation>
    </message>
    <message>
        <source>MIDI: </source>
        <translation>MIDI: </translation>
    </message>
    <message>
        <source>The MIDI output in use: the first one whose name contains &quot;FROM&quot; when the program starts</source>
        <translation>Der verwendete MIDI-Ausgang: der erste, dessen Name beim Programmstart „FROM“ enthält</translation>
    </message>
</context>
<context>
    <name>Platform</name>
    <message>
        <source>Keys reach no program. The user guide says under Wayland what helps.</source>
        <translation>Tasten erreichen kein Programm. Was hilft, sagt das Handbuch unter Wayland.</translation>
    </message>
    <message>
        <source>Keys reach no program: this X server lacks %1.</source>
        <translation>Tasten erreichen kein Programm: Diesem X-Server fehlt %1.</translation>
    </message>
    <message>
        <source>Keys reach X11 programs only. The user guide says under Wayland what helps.</source>
        <translation>Tasten erreichen nur X11-Programme. Was hilft, sagt das Handbuch unter Wayland.</translation>
    </message>
</context>
<context>
    <name>PrivateDirectory</name>
    <message>
        <source>&quot;%1&quot; is not a directory of this user alone</source>
        <translation>„%1“ ist kein Ordner, der allein diesem Benutzer gehört</translation>
    </message>
</context>
<context>
    <name>ProgramChoice</name>
    <message>
        <source>For all programs</source>
        <translation>Für alle Programme</translation>
    </message>
    <message>
        <source>Only for %1</source>
        <translation>Nur für %1</translation>
    </message>
    <message>
        <source>For which programs these buttons do this</source>
        <translation>Für welche Programme die Tasten dies tun</translation>
    </message>
    <message>
        <source>Only for the program used last</source>
        <translation>Nur für das zuletzt benutzte Programm</translation>
    </message>
</context>
<context>
    <name>ProgramsOnPage</name>
    <message>
        <source>Not kept: %1</source>
        <translation>Nicht behalten: %1</translation>
    </message>
    <message>
        <source>The programs&apos; mappings were not read: %1</source>
        <translation>Die Belegungen der Programme wurden nicht gelesen: %1</translation>
    </message>
</context>
<context>
    <name>QSerialPort</name>
    <message>
        <source>Permission error while locking the device</source>
        <translation>Das Gerät durfte nicht gesperrt werden</translation>
    </message>
</context>
<context>
    <name>RemoteClient</name>
    <message>
        <source>Veltrix is not running.</source>
        <translation>Veltrix läuft nicht.</translation>
    </message>
    <message>
        <source>The running Veltrix does not answer.</source>
        <translation>Das laufende Veltrix antwortet nicht.</translation>
    </message>
    <message>
        <source>The command is too long.</source>
        <translation>Der Befehl ist zu lang.</translation>
    </message>
</context>
<context>
    <name>RemoteControl</name>
    <message>
        <source>circular</source>
        <translation>im Kreis</translation>
    </message>
    <message>
        <source>vertical</source>
        <translation>senkrecht</translation>
    </message>
    <message>
        <source>horizontal</source>
        <translation>waagerecht</translation>
    </message>
    <message>
        <source>up and down keys</source>
        <translation>Auf- und Ab-Taste</translation>
    </message>
    <message>
        <source>left and right keys</source>
        <translation>Links- und Rechts-Taste</translation>
    </message>
    <message>
        <source>MIDI</source>
        <translation>MIDI</translation>
    </message>
    <message>
        <source>The running Veltrix does not know the command %1.</source>
        <translation>Das laufende Veltrix kennt den Befehl %1 nicht.</translation>
    </message>
    <message>
        <source>The command %1 has other arguments.</source>
        <translation>Der Befehl %1 hat andere Argumente.</translation>
    </message>
    <message>
        <source>There is no mapping “%1”.</source>
        <translation>Es gibt keine Belegung „%1“.</translation>
    </message>
    <message>
        <source>device: %1</source>
        <translation>Gerät: %1</translation>
    </message>
    <message>
        <source>connected</source>
        <translation>verbunden</translation>
    </message>
    <message>
        <source>not connected</source>
        <translation>nicht verbunden</translation>
    </message>
    <message>
        <source>mapping: %1</source>
        <translation>Belegung: %1</translation>
    </message>
    <message>
        <source>the last one kept</source>
        <translation>die zuletzt behaltene</translation>
    </message>
    <message>
        <source>layer: %1</source>
        <translation>Ebene: %1</translation>
    </message>
    <message>
        <source>knob mode: %1</source>
        <translation>Drehknopf-Modus: %1</translation>
    </message>
</context>
<context>
    <name>RemoteMessage</name>
    <message>
        <source>The answer is too long.</source>
        <translation>Die Antwort ist zu lang.</translation>
    </message>
    <message>
        <source>The request is too long.</source>
        <translation>Die Anfrage ist zu lang.</translation>
    </message>
    <message>
        <source>The request names no command.</source>
        <translation>Die Anfrage nennt keinen Befehl.</translation>
    </message>
    <message>
        <source>The request has too many arguments.</source>
        <translation>Die Anfrage hat zu viele Argumente.</translation>
    </message>
    <message>
        <source>The request has an argument that is no text.</source>
        <translation>Die Anfrage hat ein Argument, das kein Text ist.</translation>
    </message>
</context>
<context>
    <name>RemoteServer</name>
    <message>
        <source>This is another user&apos;s copy of the program.</source>
        <translation>Diese Kopie des Programms gehört einem anderen Benutzer.</translation>
    </message>
    <message>
        <source>Too many commands at a time: try again.</source>
        <translation>Zu viele Befehle auf einmal: bitte noch einmal versuchen.</translation>
    </message>
</context>
<context>
    <name>SaveDialog</name>
    <message>
        <source>Save Mapping</source>
        <translation>Belegung speichern</translation>
    </message>
    <message>
        <source>Save as:</source>
        <translation>Speichern unter:</translation>
    </message>
    <message>
        <source>type a name</source>
        <translation>Namen eingeben</translation>
    </message>
    <message>
        <source>Name of the mapping</source>
        <translation>Name der Belegung</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Saves nothing</source>
        <translation>Speichert nichts</translation>
    </message>
    <message>
        <source>Adds it to your own mappings; others of the same name stay</source>
        <translation>Legt sie zu Ihren eigenen Belegungen; andere mit demselben Namen bleiben</translation>
    </message>
    <message>
        <source>The name under which the menu lists it</source>
        <translation>Der Name, unter dem das Menü sie aufführt</translation>
    </message>
    <message>
        <source>Not saved: %1</source>
        <translation>Nicht gespeichert: %1</translation>
    </message>
    <message>
        <source>It will be listed as &apos;%1&apos;.</source>
        <translation>Sie wird als „%1“ aufgeführt.</translation>
    </message>
    <message>
        <source>This name is taken: both will be listed.</source>
        <translation>Den Namen gibt es: Beide werden aufgeführt.</translation>
    </message>
</context>
<context>
    <name>SensitivitySliders</name>
    <message>
        <source>How far the knob has to be turned for a step</source>
        <translation>Wie weit der Drehknopf für einen Schritt gedreht werden muss</translation>
    </message>
    <message>
        <source>Knob sensitivity</source>
        <translation>Empfindlichkeit des Drehknopfs</translation>
    </message>
    <message>
        <source>Knob sensitivity in Shift 1</source>
        <translation>Empfindlichkeit des Drehknopfs in Shift 1</translation>
    </message>
</context>
<context>
    <name>SentWords</name>
    <message>
        <source>Shift</source>
        <translation>Umschalt</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Links</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Auf</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Rechts</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Ab</translation>
    </message>
    <message>
        <source>note %1 on, channel %2</source>
        <translation>Note %1 an, Kanal %2</translation>
    </message>
    <message>
        <source>note %1 off, channel %2</source>
        <translation>Note %1 aus, Kanal %2</translation>
    </message>
    <message>
        <source>controller %1: %2, channel %3</source>
        <translation>Controller %1: %2, Kanal %3</translation>
    </message>
    <message>
        <source>%1 (not sent)</source>
        <translation>%1 (nicht gesendet)</translation>
    </message>
    <message>
        <source>does nothing</source>
        <translation>macht nichts</translation>
    </message>
    <message>
        <source>does nothing in %1</source>
        <translation>macht nichts in %1</translation>
    </message>
    <message>
        <source>pointer to the left</source>
        <translation>Zeiger nach links</translation>
    </message>
    <message>
        <source>pointer to the right</source>
        <translation>Zeiger nach rechts</translation>
    </message>
    <message>
        <source>pointer down</source>
        <translation>Zeiger nach unten</translation>
    </message>
    <message>
        <source>pointer up</source>
        <translation>Zeiger nach oben</translation>
    </message>
    <message>
        <source>left mouse button</source>
        <translation>linke Maustaste</translation>
    </message>
    <message>
        <source>knob</source>
        <translation>Drehknopf</translation>
    </message>
</context>
<context>
    <name>ShortcutKey</name>
    <message>
        <source>Shorcut Key</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>type a shorcut</source>
        <translation>Tastenkürzel drücken</translation>
    </message>
    <message>
        <source>Windows key</source>
        <translation>Windows-Taste</translation>
    </message>
    <message>
        <source>Alt</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>Ctrl</source>
        <translation>Strg</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Adds the Windows key</source>
        <translation>Fügt die Windows-Taste hinzu</translation>
    </message>
    <message>
        <source>Adds Alt</source>
        <translation>Fügt Alt hinzu</translation>
    </message>
    <message>
        <source>Adds Ctrl</source>
        <translation>Fügt Strg hinzu</translation>
    </message>
    <message>
        <source>Changes nothing</source>
        <translation>Ändert nichts</translation>
    </message>
    <message>
        <source>Forgets the keys</source>
        <translation>Vergisst die Tasten</translation>
    </message>
    <message>
        <source>Takes the first three keys</source>
        <translation>Übernimmt die ersten drei Tasten</translation>
    </message>
    <message>
        <source>this key cannot be used</source>
        <translation>diese Taste geht nicht</translation>
    </message>
</context>
<context>
    <name>StartupBox</name>
    <message>
        <source>Launch on startup</source>
        <translation>Bei der Anmeldung starten</translation>
    </message>
    <message>
        <source>Start the program when you log on</source>
        <translation>Das Programm startet, wenn Sie sich anmelden</translation>
    </message>
</context>
<context>
    <name>TakeBack</name>
    <message>
        <source>Nothing changed: %1</source>
        <translation>Nichts geändert: %1</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is in use. Start with it:</source>
        <translation>„%1“ gilt jetzt. Damit starten:</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is in use.</source>
        <translation>„%1“ gilt jetzt.</translation>
    </message>
    <message>
        <source>Saved as &apos;%1&apos;. Start with it:</source>
        <translation>Als „%1“ gespeichert. Damit starten:</translation>
    </message>
    <message>
        <source>Saved as &apos;%1&apos;.</source>
        <translation>Als „%1“ gespeichert.</translation>
    </message>
    <message>
        <source>The first &apos;%1&apos; was deleted.</source>
        <translation>Die erste „%1“ wurde gelöscht.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was deleted.</source>
        <translation>„%1“ wurde gelöscht.</translation>
    </message>
    <message>
        <source>An earlier %1 is back.</source>
        <translation>Eine frühere %1 ist zurück.</translation>
    </message>
    <message>
        <source>Button %1 is as it was.</source>
        <translation>Taste %1 ist wie zuvor.</translation>
    </message>
    <message>
        <source>Button %1 was changed again.</source>
        <translation>Taste %1 ist wieder geändert.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was not chosen.</source>
        <translation>„%1“ ist nicht mehr gewählt.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is in use again.</source>
        <translation>„%1“ gilt wieder.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is no longer saved.</source>
        <translation>„%1“ ist nicht mehr gespeichert.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is saved again.</source>
        <translation>„%1“ ist wieder gespeichert.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is back.</source>
        <translation>„%1“ ist wieder da.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was deleted again.</source>
        <translation>„%1“ ist wieder gelöscht.</translation>
    </message>
    <message>
        <source>%1 is as it was.</source>
        <translation>%1 ist wie zuvor.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was imported.</source>
        <translation>„%1“ wurde importiert.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not imported any more.</source>
        <translation>„%1“ ist nicht mehr importiert.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; was imported again.</source>
        <translation>„%1“ wurde wieder importiert.</translation>
    </message>
    <message>
        <source>Imported: %1</source>
        <translation>Importiert: %1</translation>
    </message>
    <message>
        <source>Not imported any more: %1</source>
        <translation>Nicht mehr importiert: %1</translation>
    </message>
    <message>
        <source>Imported again: %1</source>
        <translation>Wieder importiert: %1</translation>
    </message>
</context>
<context>
    <name>TravelCommands</name>
    <message>
        <source>There is no mapping “%1”.</source>
        <translation>Es gibt keine Belegung „%1“.</translation>
    </message>
    <message>
        <source>“%1” was not exported: %2 is there already.</source>
        <translation>„%1“ wurde nicht exportiert: %2 gibt es schon.</translation>
    </message>
    <message>
        <source>“%1” was not exported: %2.</source>
        <translation>„%1“ wurde nicht exportiert: %2.</translation>
    </message>
</context>
<context>
    <name>WelcomeWindow</name>
    <message>
        <source>Welcome to VELTRIX setup panel.</source>
        <translation>Willkommen bei der Einrichtung von VELTRIX.</translation>
    </message>
    <message>
        <source>Please connect your device with a usb cable.</source>
        <translation>Bitte schließen Sie Ihr Gerät mit einem USB-Kabel an.</translation>
    </message>
    <message>
        <source>Connect</source>
        <translation>Anschließen</translation>
    </message>
    <message>
        <source>The panel opens by itself as soon as the device is found.</source>
        <translation>Die Einstellungen öffnen sich von selbst, sobald das Gerät gefunden ist.</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Angeschlossen</translation>
    </message>
    <message>
        <source>Not connected</source>
        <translation>Nicht angeschlossen</translation>
    </message>
    <message>
        <source>The device is there, but its port cannot be opened: %1</source>
        <translation>Das Gerät ist da, aber sein Anschluss lässt sich nicht öffnen: %1</translation>
    </message>
    <message>
        <source>Trouble-shooting</source>
        <translation>Hilfe bei Problemen</translation>
    </message>
    <message>
        <source>Opens the user guide: what to do when the device is not found</source>
        <translation>Öffnet die Anleitung: was tun, wenn das Gerät nicht gefunden wird</translation>
    </message>
</context>
<context>
    <name>XmlMappingReader</name>
    <message>
        <source>Open Xml</source>
        <translation>XML öffnen</translation>
    </message>
    <message>
        <source>Xml files (*.xml)</source>
        <translation>XML-Dateien (*.xml)</translation>
    </message>
</context>
<context>
    <name>ZRBaseWindow</name>
    <message>
        <source>Veltrix</source>
        <translation>Veltrix</translation>
    </message>
    <message>
        <source>VERSION</source>
        <translation>VERSION</translation>
    </message>
    <message>
        <source>Contact</source>
        <translation>Kontakt</translation>
    </message>
    <message>
        <source>User Guide</source>
        <translation>Handbuch</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>A new version of Veltrix is available!</source>
        <translation>Eine neue Version von Veltrix ist verfügbar!</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <source>Downloading 0%</source>
        <translation>Herunterladen: 0 %</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Download</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Would you like to download Veltrix %1 now?</source>
        <translation>Möchten Sie Veltrix %1 jetzt herunterladen?</translation>
    </message>
    <message>
        <source>Downloading  %1 %</source>
        <translation>Herunterladen: %1 %</translation>
    </message>
    <message>
        <source>Downloading 0 %</source>
        <translation>Herunterladen: 0 %</translation>
    </message>
    <message>
        <source>Shows the licences of Veltrix and of what it is built on</source>
        <translation>Zeigt die Lizenzen von Veltrix und dessen, worauf es baut</translation>
    </message>
</context>
<context>
    <name>ZRDialog</name>
    <message>
        <source>Veltrix</source>
        <translation>Veltrix</translation>
    </message>
</context>
<context>
    <name>ZRMainWindow</name>
    <message>
        <source>Veltrix</source>
        <translation>Veltrix</translation>
    </message>
    <message>
        <source>Hide the window</source>
        <translation>Fenster ausblenden</translation>
    </message>
    <message>
        <source>Hide the window; the program goes on</source>
        <translation>Fenster ausblenden; das Programm läuft weiter</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Hide the window; the program goes on. Start it once more to bring the window back.</source>
        <translation>Fenster ausblenden; das Programm läuft weiter. Noch einmal starten bringt das Fenster zurück.</translation>
    </message>
</context>
<context>
    <name>ZRUpdater</name>
    <message>
        <source>A new version of Veltrix is available. Do you want to install it?</source>
        <translation>Eine neue Version von Veltrix ist verfügbar. Möchten Sie sie installieren?</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>A new version of Veltrix is available. Press OK to install it</source>
        <translation>Eine neue Version von Veltrix ist verfügbar. Klicken Sie auf „OK“, um sie zu installieren</translation>
    </message>
    <message>
        <source>Please press OK to close Veltrix and complete the update process.</source>
        <translation>Bitte klicken Sie auf „OK“, um Veltrix zu beenden und die Aktualisierung abzuschließen.</translation>
    </message>
    <message>
        <source>An error occurred during download.</source>
        <translation>Beim Herunterladen ist ein Fehler aufgetreten.</translation>
    </message>
    <message>
        <source>The new version has been downloaded, but Veltrix is not allowed to replace itself here. Please install it yourself:
%1</source>
        <translation>Die neue Version ist heruntergeladen, aber Veltrix darf sich hier nicht selbst ersetzen. Bitte installieren Sie sie selbst:
%1</translation>
    </message>
    <message>
        <source>A new version of Veltrix is available. Please install it in the way in which this copy was installed: %1</source>
        <translation>Eine neue Version von Veltrix ist verfügbar. Bitte installieren Sie sie auf dem Weg, auf dem diese Fassung installiert wurde: %1</translation>
    </message>
</context>
<context>
    <name>simulator::DeviceView</name>
    <message>
        <source>Virtual device</source>
        <translation>Virtuelles Gerät</translation>
    </message>
    <message>
        <source>Ten buttons, on the keys 0 to 9, and a knob, on the arrow keys and the blank key</source>
        <translation>Zehn Tasten, auf den Tasten 0 bis 9, und ein Drehknopf, auf den Pfeiltasten und der Leertaste</translation>
    </message>
    <message>
        <source>Knob
Hold to touch, drag round or use the wheel to turn
Keys: blank to touch, left and right to turn</source>
        <translation>Drehknopf
Halten zum Berühren, im Kreis ziehen oder mit dem Rad drehen
Tasten: Leertaste zum Berühren, links und rechts zum Drehen</translation>
    </message>
    <message>
        <source>Button %1, key %1
Right click or Ctrl+click to keep it down</source>
        <translation>Taste %1, auf der Tastatur %1
Rechtsklick oder Strg+Klick hält sie gedrückt</translation>
    </message>
</context>
<context>
    <name>simulator::DeviceWindow</name>
    <message>
        <source>Plugged in</source>
        <translation>Eingesteckt</translation>
    </message>
    <message>
        <source>Leave the keyboard to other windows</source>
        <translation>Tastatur anderen Fenstern lassen</translation>
    </message>
    <message>
        <source>Virtual device</source>
        <translation>Virtuelles Gerät</translation>
    </message>
    <message>
        <source>Puts the cable in or pulls it out</source>
        <translation>Steckt das Kabel ein oder zieht es heraus</translation>
    </message>
    <message>
        <source>A click on the device then leaves the focus where it is, so that the injected keys arrive there.
The device&apos;s own keys do nothing meanwhile.</source>
        <translation>Ein Klick auf das Gerät lässt den Fokus dann, wo er ist, sodass die gesendeten Tasten dort ankommen.
Die Tasten des Geräts selbst tun solange nichts.</translation>
    </message>
    <message>
        <source>Start the program with --port and this text</source>
        <translation>Das Programm mit --port und diesem Text starten</translation>
    </message>
    <message>
        <source>The latest reports, the newest first</source>
        <translation>Die letzten Meldungen, die neueste zuerst</translation>
    </message>
    <message>
        <source>Latest reports</source>
        <translation>Letzte Meldungen</translation>
    </message>
    <message>
        <source>Unplugged</source>
        <translation>Abgezogen</translation>
    </message>
    <message>
        <source>In use</source>
        <translation>In Gebrauch</translation>
    </message>
    <message>
        <source>Waiting for the program</source>
        <translation>Wartet auf das Programm</translation>
    </message>
</context>
</TS>
