// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

// Where the program's files lie. Paths use "/" and carry none at the end; every function may be called on any thread.

// The folder of the program's data: QUINCE_HOME when that is set, else the folder of the program file when it can be
// written, else $XDG_DATA_HOME/QUINCE.
QString GetAppDir();

// AppDir + "/" + name; AppDir itself for an empty name. Either slash is understood in `name`.
QString AppPath(const QString& name);

// AppDir/Config.ini: the settings.
QString ConfigIni();

// A program that was installed beside this one: the folder of the program file + "/" + name. Never looked for where a
// user could put one.
QString ProgramPath(const QString& name);

// A resource that came with the program: in AppDir when it exists there (so that a user can replace one), else in the
// folder of the program file. The AppDir path when it is in neither.
QString ResourcePath(const QString& name);

// Every folder of that name among the resources, AppDir's before that beside the program file; none that is missing.
QStringList ResourceDirs(const QString& name);

// The same path with "/" for each "\" and one slash where several stand in a row. The one place where slashes are
// mapped.
QString NativePath(const QString& path);

// Makes a folder and its missing parents; true when it is there afterwards. What lies at or below AppDir/Temp is made
// for the user alone (0700).
bool MakeDirs(const QString& path);

// Deletes every file below `path`, which must lie strictly below AppDir, and keeps the folders. Links are deleted,
// never followed, and a path that leads through one is refused. False when refused or when something stayed; a folder
// that does not exist has nothing to wipe.
bool WipeDir(const QString& path);

// Makes AppDir/Temp a real folder of this user that nobody else can look into; a link or file in its place is removed.
// False when that fails.
bool MakeTempPrivate();

// Whether a path leads into AppDir/Temp, by itself or through links. That folder is wiped at exit, so nothing in it is
// the user's to keep.
bool IsInTemp(const QString& path);

// Folder `name` in the user's documents folder, made when missing; empty when there is none and none can be made.
QString GetDocumentsDir(const QString& name);

// True when the last three or four characters name a kind of picture that can be opened; case does not matter, and the
// file is not looked at.
bool IsSupportedImage(const QString& path);

// The simple frame `base` of the folder `dir` (which ends in a slash): dir + base + ".nlf", else ".vnbkwz"; empty when
// neither exists. Case counts in the name, not in the extension.
QString FrameFileFor(const QString& dir, const QString& base);
// The same for an ornate frame, ".vnbkxc".
QString OrnateFrameFileFor(const QString& dir, const QString& base);

// Full path of the picture last asked for, whether or not it could be opened.
QString CurrentImagePath();
void SetCurrentImagePath(const QString& path);
