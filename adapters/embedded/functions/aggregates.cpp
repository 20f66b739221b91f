#include <cmath>
#include <cstdint>
#include <new>
#include <string>

#include "functions/catalog.h"
#include "functions/conversion.h"

/// Aggregates; each also works over a moving window.
namespace tamarok::embedded::functions {

namespace {

struct WholeSum {
    std::int64_t total;
    std::int64_t count;
};

/// The value of the only row, a copy of it, and whether there was a row. SQLite's memory begins as zeros.
struct OnlyValue {
    sqlite3_value* value;
    bool taken;
};

/// Number, mean and sum of squared deviations, kept up value by value (Welford's method).
struct Spread {
    std::int64_t count;
    double mean;
    double squares;
};

/// SQLite zeroes the memory, which is the empty state of both.
template <typename State>
State& stateOf(sqlite3_context* context)
{
    void* memory = sqlite3_aggregate_context(context, static_cast<int>(sizeof(State)));
    if (memory == nullptr) throw std::bad_alloc{};
    return *static_cast<State*>(memory);
}

/// Adds a value to the sum or, as a window moves on, takes it out again. Nulls do not count.
void takeWhole(sqlite3_context* context, sqlite3_value* value, bool add)
{
    if (storageOf(value) == Storage::Null) return;
    auto& sum = stateOf<WholeSum>(context);
    const std::int64_t number = toWhole(value, WholeType::BigInt);
    const bool overflow = add ? __builtin_add_overflow(sum.total, number, &sum.total)
                              : __builtin_sub_overflow(sum.total, number, &sum.total);
    if (overflow) {
        failWith(8115, "Arithmetic overflow error converting expression to data type bigint.", std::to_string(number));
    }
    sum.count += add ? 1 : -1;
}

void takeOnly(sqlite3_context* context, sqlite3_value* value, bool)
{
    auto& only = stateOf<OnlyValue>(context);
    if (only.taken) {
        fail(512,
             "Subquery returned more than 1 value. This is not permitted when the subquery follows =, !=, <, <=, >, "
             ">= or when the subquery is used as an expression.");
    }
    only.taken = true;
    only.value = sqlite3_value_dup(value);
    if (only.value == nullptr) throw std::bad_alloc{};
}

/// SQLite calls it in any case, after a failure too.
void resultOnly(Call& call)
{
    auto& only = stateOf<OnlyValue>(call.context());
    if (only.value == nullptr) return call.resultNull();
    sqlite3_result_value(call.context(), only.value);
    sqlite3_value_free(only.value);
    only.value = nullptr;
}

/// Removal undoes the step of adding. With the last value the state is zeroed, so that no rounding error remains.
void takeSpread(sqlite3_context* context, sqlite3_value* value, bool add)
{
    if (storageOf(value) == Storage::Null) return;
    auto& spread = stateOf<Spread>(context);
    const double number = toFloat(value);
    const double before = number - spread.mean;
    if (add) {
        ++spread.count;
        spread.mean += before / static_cast<double>(spread.count);
        spread.squares += before * (number - spread.mean);
        return;
    }
    if (--spread.count == 0) {
        spread = {};
        return;
    }
    spread.mean -= before / static_cast<double>(spread.count);
    spread.squares -= before * (number - spread.mean);
}

/// SUM of ints is an int: the sum is kept in 64 bits and checked at the end. No values give Null.
void resultIntSum(Call& call)
{
    const auto& sum = stateOf<WholeSum>(call.context());
    if (sum.count == 0) return call.resultNull();
    call.result(checkedInt(sum.total));
}

void resultBigSum(Call& call)
{
    const auto& sum = stateOf<WholeSum>(call.context());
    if (sum.count == 0) return call.resultNull();
    call.result(sum.total);
}

/// AVG is an error where the sum is beyond the type, as on the server.
template <bool big>
void resultAverage(Call& call)
{
    const auto& sum = stateOf<WholeSum>(call.context());
    if (sum.count == 0) return call.resultNull();
    call.result((big ? sum.total : checkedInt(sum.total)) / sum.count);
}

/// Of a sample (divided by count - 1; Null below two values) or of all.
template <bool sample, bool root>
void resultSpread(Call& call)
{
    const auto& spread = stateOf<Spread>(call.context());
    const std::int64_t divisor = sample ? spread.count - 1 : spread.count;
    if (divisor < 1) return call.resultNull();
    const double variance = std::fmax(spread.squares, 0.0) / static_cast<double>(divisor);
    call.result(root ? std::sqrt(variance) : variance);
}

/// What SQLite calls for each row; exceptions become errors of the statement.
template <auto take, bool add>
void step(sqlite3_context* context, int, sqlite3_value** arguments) noexcept
{
    try {
        take(context, arguments[0], add);
    } catch (...) {
        reportFailure(context);
    }
}

template <auto finishAggregate>
void finish(sqlite3_context* context) noexcept
{
    try {
        Call call{context, {}};
        finishAggregate(call);
    } catch (...) {
        reportFailure(context);
    }
}

/// A row of the table below: the aggregate `name` with its step, inverse step and result.
template <auto take, auto finishAggregate>
constexpr AggregateEntry aggregate(const char* name)
{
    return {name, &step<take, true>, &step<take, false>, &finish<finishAggregate>};
}

constexpr AggregateEntry entries[] = {aggregate<takeWhole, resultIntSum>("tm_sum_int"),
                                      aggregate<takeWhole, resultBigSum>("tm_sum_big"),
                                      aggregate<takeWhole, resultAverage<false>>("tm_avg_int"),
                                      aggregate<takeWhole, resultAverage<true>>("tm_avg_big"),
                                      {"tm_only", &step<takeOnly, true>, nullptr, &finish<resultOnly>},
                                      aggregate<takeSpread, resultSpread<true, true>>("tm_stdev"),
                                      aggregate<takeSpread, resultSpread<true, false>>("tm_var"),
                                      aggregate<takeSpread, resultSpread<false, true>>("tm_stdevp"),
                                      aggregate<takeSpread, resultSpread<false, false>>("tm_varp")};

} // namespace

std::span<const AggregateEntry> aggregateEntries() noexcept
{
    return entries;
}

} // namespace tamarok::embedded::functions
