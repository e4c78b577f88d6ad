#pragma once
// The parts of start-up and shutdown that need no screen: the run id, the command line, and
// the cleanup of the models' exchange files.

#include <string>
#include <vector>

#include "base/host.hpp"
#include "base/prompt.hpp"
#include "model/model.hpp"

namespace arborex {

// Six digits, "000000" formatted from `fraction` (0 <= fraction < 1) times 1,000,000. Two copies
// of the program running at once use it to keep their temporary names apart.
std::string makeRunId(double fraction);
// The same from a fresh random number.
std::string makeRunId();

struct CommandLine {
    std::string projectPath;  // empty when none was given
    bool logMode = false;
};

// Reads the joined command line: tokens beginning with "/" or "-" are options, of which only
// LOG (any case) counts; any other token is the project to open, the last one winning. A token
// beginning with "/" that holds a further "/" is an absolute path, not an option. Tokens are
// split at blanks; a quoted token keeps its blanks.
CommandLine parseCommandLine(const std::string& joinedArgs);

// Joins separately passed arguments back into one command line that parseCommandLine reads
// the same way: arguments with blanks are quoted, quotes inside doubled.
std::string joinArguments(const std::vector<std::string>& args);

// When `path` names no existing file, tells the user and forgets it, so start-up goes on as
// without a project.
void dropMissingProject(Prompt& prompt, std::string& path);

// Step 4 of start-up, and the batch front end's whole set-up: the choice lists, the message
// catalogue, both species tables and the PSYU list from Paths[0], then SetAgeInc. A file that
// is missing is told once and passed over.
void LoadReferenceData(Model& m, Host& host);

}  // namespace arborex
