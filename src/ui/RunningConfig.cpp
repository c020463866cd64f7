#include "RunningConfig.h"

StrategyConfig &runningConfig()
{
    static StrategyConfig config;
    return config;
}
