#pragma once

#include "script/StrategyConfig.h"

// The configuration the desktop program runs with: loaded from "config.conf"
// when the main window opens, changed by the configuration editor and by the
// `config.` lines of every script compiled in the workbench. Touched only on
// the interface thread; a run works on its own copy.
StrategyConfig &runningConfig();
