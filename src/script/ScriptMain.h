#pragma once

namespace kestrune {

/// True when the command line asks for a batch script (`--script`).
bool IsScriptRequest(int argc, char** argv);

/// Runs the script in place of the window program: on the offscreen platform unless `--show`, with default settings in memory
/// unless `--settings`. At its end the program closes: settings are written as at any exit, pictures that the script did
/// not save are dropped. The exit status: 0 when every line ran, 1 at the first that failed, 2 for a usage error.
int ScriptMain(int argc, char** argv);

} // namespace kestrune
