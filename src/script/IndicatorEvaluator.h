#pragma once

#include "MetaEvalutor.h"
#include "indicators/IndicatorCache.h"

#include <memory>
#include <vector>

// Common ground of the terms backed by a streaming indicator: bind runs the
// indicator once over the stock and keeps the chosen line per bar, so a day's
// value is a lookup. Terms bound with one cache that read the same line share
// it, so repeating a term costs no memory per bar.
struct IndicatorEvaluator : MetaEvalutor {
    void bind(StockBars bars, IndicatorCache &cache) override;
    int value(int dayIndex, EvalValue &out) const override;
    void numbers(int from, int to, double *out, unsigned char *delivered) const override;

protected:
    // Which of the indicator's lines the term reads; terms alike in key and
    // line read the same values.
    virtual int lineIndex() const { return 0; }

    // The term's line and where it is defined, one entry per bar; by default
    // the indicator the cache holds under cacheKey() is fed bar by bar.
    virtual void computeLine(StockBars bars, IndicatorCache &cache, std::vector<float> &line,
                             std::vector<unsigned char> &defined);

    // Terms with the same key read the same indicator and share one computation.
    virtual QString cacheKey() const = 0;

    // A fresh indicator for this term, or nullptr when it can never have a value.
    virtual std::unique_ptr<StockIndicator> makeIndicator() const = 0;
    virtual float lineOf(const IndicatorValue &result) const { return result.value1; }

private:
    QString m_lineKey; // made on the first bind; copies keep it
    std::shared_ptr<const IndicatorLine> m_shared;
    const float *m_values = nullptr;
    const unsigned char *m_defined = nullptr;
};

// "name,period,offset" terms over one average.
struct PeriodEvaluator : IndicatorEvaluator {
    bool parse(const QString &text) override;

protected:
    int m_period = 0;
    QString cacheKey() const override
    {
        return names().constFirst() + QLatin1Char(',') + QString::number(m_period);
    }
};

// Simple averages of one bar field, computed for the whole series at once
// rather than through a streaming indicator.
struct WindowAverageEvaluator : PeriodEvaluator {
protected:
    virtual float Stock::*field() const = 0; // the bar field averaged
    void computeLine(StockBars bars, IndicatorCache &cache, std::vector<float> &line,
                     std::vector<unsigned char> &defined) override;
    std::unique_ptr<StockIndicator> makeIndicator() const final { return nullptr; }

private:
    std::vector<float> m_field;
};
