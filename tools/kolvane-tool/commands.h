#pragma once
#include <QStringList>

// The commands of kolvane-tool. Each gets its arguments (without the command
// name), prints its result on stdout and returns the exit status: 0 success,
// 1 a missing or damaged input (one line on stderr says what), 2 bad usage.
namespace kolvane::tool {

int runNewLibrary(const QStringList& args);
int runInfo(const QStringList& args);
int runCodes(const QStringList& args);
int runRender(const QStringList& args);
int runSlideInfo(const QStringList& args);
int runDemoLibrary(const QStringList& args);
#ifdef KOLVANE_TOOL_CHECK
// Exit 0 clean, 1 findings (after --repair: findings left), 2 bad call or library.
int runCheck(const QStringList& args);
#endif

}  // namespace kolvane::tool
