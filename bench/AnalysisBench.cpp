// What is worked out from payments, against a plain loop that adds up the same floats in typed records.
#include <numeric>

#include "Household.h"
#include "Ratio.h"
#include "analysis/QMMonthlyGraphManager.h"
#include "analysis/QMStatisticsCalculator.h"
#include "foundation/PropertyList.h"
#include "storage/QMBillsLoader.h"

namespace tallyvane::bench {
namespace {

/// A payment as a program without property lists would hold it.
struct Payment {
  float amount;
  Date date;
  std::string note;
  std::string receipt;
};

/// The file of a bill of this household with so many payments.
std::string billFile(Household& household, std::size_t number, std::size_t payments) {
  Dictionary bill = household.bill(number);
  const Array some = bill.valueOr("PaymentList", Array());
  Array list;
  for (std::size_t i = payments; i > 0; --i) {
    Dictionary payment = *some[i % some.size()].get<Dictionary>();
    payment.set("Date", FixedClock::today - std::chrono::days{payments <= 60 ? 30 * i : i % 36500});
    list.emplace_back(std::move(payment));
  }
  bill.set("PaymentList", std::move(list));
  return writePropertyList(bill);
}

void append(const Dictionary& bill, std::vector<Payment>& payments) {
  for (const Value& element : *bill.get<Array>("PaymentList")) {
    const Dictionary& payment = *element.get<Dictionary>();
    payments.push_back({static_cast<float>(*payment.get<double>("Amount")), *payment.get<Date>("Date"),
                        *payment.get<std::string>("Note"), *payment.get<std::string>("Receipt")});
  }
}

float sumOf(const std::vector<Payment>& payments) {
  float sum = 0;
  for (const Payment& payment : payments) sum += payment.amount;
  benchmark::DoNotOptimize(sum);
  return sum;
}

/// The four counts over all bills as they are listed, and the totals of each.
void statistics(benchmark::State& state) {
  const Household household(10000, 36);
  Desktop desktop(household.folder());
  desktop.platform.groupDefaults = nullptr;  // no snapshot
  const std::vector<Dictionary> loaded = QMBillsLoader{desktop.platform}.loadBills();
  std::vector<Payment> payments;
  for (const Dictionary& bill : loaded) append(bill, payments);
  if (payments.size() != 360'000) state.SkipWithError("payments are missing");
  compareWithFloor(
      state, Work::inThisProcess, 15, [&] { return sumOf(payments); },
      [&] {
        const QMStatisticsCalculator calculator{desktop.platform};
        Array counts{calculator.countAndAmountofBillsDueSoonForData(loaded),
                     calculator.countAndAmountofBillsDueExcludingOverdueSoonForData(loaded),
                     calculator.countAndAmountofBillsOverdueSoonForData(loaded),
                     calculator.countAndAmountofBillsDueLaterForData(loaded)};
        benchmark::DoNotOptimize(counts);
        double total = 0;
        for (const Dictionary& bill : loaded) total += *calculator.totalsForBill(bill).get<double>("Total");
        return total;
      });
}
BENCHMARK(statistics)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

/// The whole graph of one bill with so many payments over a hundred years: "per_payment_ns" stays the same.
void monthGraph(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  const Result<Value> file = readPropertyList(billFile(Household::of(10), 0, count));
  const Dictionary& bill = *file->get<Dictionary>();
  std::vector<Payment> payments;
  append(bill, payments);
  Desktop desktop(Household::of(10).folder());
  Times graphs;
  const auto graph = [&] { return QMMonthlyGraphManager{desktop.platform}.listOfPaymentsByMonthForBill(bill); };
  compareWithFloor(
      state, Work::inThisProcess, 30, [&] { return sumOf(payments); },
      [&] {
        graphs.measure(graph);
        return 0;
      });
  state.counters["per_payment_ns"] = graphs.wall() / static_cast<double>(count) * 1e9;
}
BENCHMARK(monthGraph)->UseManualTime()->Unit(benchmark::kMillisecond)->Arg(20'000)->Arg(100'000)->Iterations(50);

}  // namespace
}  // namespace tallyvane::bench
