#pragma once

#include "MaNIndicator.h"

class VolMaNIndicator : public WindowAverageIndicator {
public:
    using WindowAverageIndicator::WindowAverageIndicator;

protected:
    float fieldOf(const Stock &bar) const override { return bar.volume; }
};
