#include "script/DmiPeriods.h"
#include "script/CompiledStrategy.h"

#include <gtest/gtest.h>

// A chart shows the DMI a strategy reads: the periods of its first DMI term.
TEST(DmiPeriods, TheFirstDmiTermOfAStatementGivesThePeriodsElseFourteenAndSix)
{
    const QString script = QStringLiteral("# dmi.pdi,30,9,0 in a comment is not read\n"
                                          "config.trade.max.hold.day,3\n"
                                          "buy.close,0>ma,5,0\n"
                                          "buy.dmi.adx,20,8,-1>dmi.adxr,12,3,0|dmi.pdi,10,4,0>value,30\n"
                                          "sale.dmi.mdi,9,2,0>value,50");
    EXPECT_EQ(DmiPeriods::ofScript(script), (DmiPeriods{20, 8}));
    const CompileResult compiled = CompiledStrategy::compile(StrategyConfig(), script);
    ASSERT_EQ(compiled.status, CompileResult::Status::Ok);
    EXPECT_EQ(compiled.strategy->dmiPeriods(), (DmiPeriods{20, 8}));
    // Without a DMI term, the usual fourteen and six.
    EXPECT_EQ(DmiPeriods::ofScript(QStringLiteral("buy.kdj.k,0<20\nsale.close,0>ma,5,0\n")),
              (DmiPeriods{14, 6}));
}
