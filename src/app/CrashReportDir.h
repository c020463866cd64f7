#pragma once

#include "CrashText.h"

struct CrashClockTime;

// The folder of crash reports and the files in it, handled only with calls
// that are safe inside a signal handler: no allocation, no stdio, no locks.
//
// The folder is ours: when "crash" is a symlink or not a directory the
// report is dropped rather than written wherever the link leads, and a name
// that already exists in it, a planted symlink included, is never opened.
namespace CrashReportDir {

constexpr int kKeptReports = 20;

// "orvel.quant<year>-<month>-<day>-<hour>-<minute>-<second>-<millisecond>-
// <two random digits>.dmp", the moment in local time.
CrashText reportName(const CrashClockTime &t, int millisecond);

// The directory `path`, made if missing, opened for the *at() calls; -1 when
// it cannot be made, is a symlink or is not a directory.
int open(const char *path);

// Creates the new file `name` in `dir` for writing; -1 if anything, a file or
// a symlink, already has that name.
int createNew(int dir, const char *name);

// Deletes all but the `keep` newest reports in `dir`, newest by the time in
// their names; other files stay.
void prune(int dir, int keep = kKeptReports);

// The moment a report's name gives (year down to millisecond, then its random
// part) as one number that orders reports by age; 0 for any other name.
unsigned long long reportAge(const char *name);

} // namespace CrashReportDir
