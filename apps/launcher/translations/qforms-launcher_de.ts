<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>GamePage</name>
    <message>
        <location filename="../GamePage.cpp" line="+23"/>
        <source>The config file %1 could not be opened in an editor.
%2
Install a desktop opener and a text editor (Debian: xdg-utils and gedit or kate), then press Edit again.</source>
        <translation>Die Konfigurationsdatei %1 konnte nicht in einem Editor geöffnet werden.
%2
Installieren Sie einen Desktop-Öffner und einen Texteditor (Debian: xdg-utils und gedit oder kate) und drücken Sie dann erneut Bearbeiten.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <location line="+53"/>
        <source>The texts of this language could not be loaded:
%1</source>
        <translation>Die Texte dieser Sprache konnten nicht geladen werden:
%1</translation>
    </message>
</context>
<context>
    <name>GameRun</name>
    <message>
        <location filename="../GameRun.cpp" line="+15"/>
        <source>The game could not be started: %1</source>
        <translation>Das Spiel konnte nicht gestartet werden: %1</translation>
    </message>
    <message>
        <location line="+35"/>
        <source>The game crashed.</source>
        <translation>Das Spiel ist abgestürzt.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>The game ended with exit code %1.</source>
        <translation>Das Spiel endete mit Exit-Code %1.</translation>
    </message>
</context>
<context>
    <name>LauncherWindow</name>
    <message>
        <location filename="../LauncherWindow.cpp" line="+213"/>
        <source>&amp;Games</source>
        <translation>&amp;Spiele</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Filter the games</source>
        <translation>Spiele filtern</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Games</source>
        <translation>Spiele</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&amp;Language:</source>
        <translation>S&amp;prache:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Co&amp;mmand:</source>
        <translation>&amp;Befehl:</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&amp;Play</source>
        <translation>Spi&amp;elen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Game &amp;log</source>
        <translation>Spiel&amp;protokoll</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&amp;OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>No game matches the filter.</source>
        <translation>Kein Spiel passt zum Filter.</translation>
    </message>
    <message>
        <location line="+89"/>
        <source>Your settings file held lines that could not be read as they were meant, such as a quote that was never closed. Your choices were saved, and the file as it was is kept in %1.</source>
        <translation>Ihre Einstellungsdatei enthielt Zeilen, die nicht so gelesen werden konnten, wie sie gemeint waren, etwa ein nie geschlossenes Anführungszeichen. Ihre Auswahl wurde gespeichert; die Datei, wie sie war, liegt in %1.</translation>
    </message>
    <message>
        <location line="+56"/>
        <source>%1 (running)</source>
        <translation>%1 (läuft)</translation>
    </message>
    <message>
        <location line="+82"/>
        <source>%1 cannot start: no folder or program is chosen. Choose the game&apos;s folder or program on its page.</source>
        <translation>%1 kann nicht starten: Es ist kein Ordner und kein Programm gewählt. Wählen Sie den Ordner oder das Programm des Spiels auf seiner Seite.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>%1 cannot start: its program %2 was not found. Choose the game&apos;s folder or program on its page.</source>
        <translation>%1 kann nicht starten: sein Programm %2 wurde nicht gefunden. Wählen Sie auf seiner Seite den Ordner oder das Programm des Spiels.</translation>
    </message>
    <message>
        <location line="+7"/>
        <source>%1 is a Windows program and needs Wine, but %2 was not found.
Install Wine (Debian: sudo apt install wine), or name another Wine build in the QFORMS_WINE environment variable or as WindowsRunner in the [Launcher] section of launcher.ini.</source>
        <translation>%1 ist ein Windows-Programm und braucht Wine, aber %2 wurde nicht gefunden.
Installieren Sie Wine (Debian: sudo apt install wine) oder nennen Sie einen anderen Wine-Build in der Umgebungsvariablen QFORMS_WINE oder als WindowsRunner im Abschnitt [Launcher] der launcher.ini.</translation>
    </message>
    <message>
        <location line="+18"/>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>

The last lines it printed:
%1</source>
        <translation>

Die letzten Zeilen, die es ausgab:
%1</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>

Everything it printed is in %1.</source>
        <translation>

Alles, was es ausgab, steht in %1.</translation>
    </message>
    <message>
        <location line="+15"/>
        <source>%1 has no log yet: it is written when the game is started with Play.</source>
        <translation>Für %1 gibt es noch kein Protokoll: es entsteht, wenn das Spiel mit Spielen gestartet wird.</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>The log %1 could not be opened. Install a desktop opener (Debian: xdg-utils).</source>
        <translation>Das Protokoll %1 konnte nicht geöffnet werden. Installieren Sie einen Desktop-Öffner (Debian: xdg-utils).</translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Your choices were not kept. %1
Press OK to try again.</source>
        <translation>Ihre Auswahl wurde nicht gespeichert. %1
Drücken Sie OK, um es erneut zu versuchen.</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <location filename="../main.cpp" line="+67"/>
        <source>The sample host folder is missing. Build or install the launcher again.</source>
        <translation>Der Beispiel-Host-Ordner fehlt. Bauen oder installieren Sie den Starter erneut.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>The launcher configuration lists no games.</source>
        <translation>Die Konfiguration des Starters nennt keine Spiele.</translation>
    </message>
</context>
</TS>
