#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "analysis/QMMonthlyGraphManager.h"
#include "cli/Failure.h"
#include "cli/Json.h"
#include "cli/bills/BillLookup.h"
#include "cli/bills/BillText.h"
#include "cli/bills/PaymentChange.h"
#include "cli/commands/Commands.h"
#include "cli/input/TextInput.h"
#include "cli/terminal/Bars.h"
#include "cli/terminal/DisplayText.h"
#include "cli/terminal/Table.h"
#include "common/Sentences.h"

namespace tallyvane::cli {

namespace {

struct Options {
  std::string bill;
  std::string by = "month";
  std::optional<std::string> svg;
};

/// The bars, and the number behind each.
struct Graph {
  std::vector<GraphBar> bars;
  Array amounts;
};

Graph graphOf(const Platform& platform, const ListedBill& bill, bool byMonth) {
  const QMMonthlyGraphManager manager{platform};
  const Array& payments = paymentsOf(bill);
  const Array graphs = byMonth ? manager.listOfPaymentsByMonthForBill(bill.content)
                               : manager.listOfPaymentsByPaymentForBill(bill.content);
  return {barsOf(*graphs.at(0).get<Dictionary>()),
          byMonth ? manager.paymentAmountsByMonthForList(payments) : manager.amountsForPayments(payments)};
}

/// What label and amount leave of the terminal's width, within reason.
int barWidth(const Console& console, const std::vector<GraphBar>& bars) {
  constexpr int narrowest = 4;
  constexpr int widest = 50;
  constexpr int titlesAndGaps = 5 + 2 * 2;
  int label = 0;
  int amount = 0;
  for (const GraphBar& each : bars) {
    label = std::max(label, displayWidth(each.label));
    amount = std::max(amount, displayWidth(each.amountText));
  }
  return std::clamp(console.terminal().width - label - amount - titlesAndGaps, narrowest, widest);
}

/// On a terminal without the empty bars after the last payment.
void printGraph(Session& session, const Graph& graph, bool byMonth) {
  const bool isShort = session.console.interactive() && !byMonth;
  const int width = barWidth(session.console, graph.bars);
  Table table({{byMonth ? marked("Month") : marked("Day")}, {"", false, 0, 1}, {marked("Amount"), true}});
  for (std::size_t i = 0; i < graph.bars.size(); ++i) {
    const GraphBar& each = graph.bars[i];
    if (isShort && each.label.empty() && graph.amounts[i] == Value(0.0F)) continue;
    table.add({each.label, Cell(bar(each.height, width), fmt::format("{:.4f}", std::fabs(each.height)), colourOf(each)),
               Cell(each.amountText, amountCell(session.platform, &graph.amounts[i]).plain)});
  }
  table.print(session.console);
}

void printGraphJson(Session& session, const ListedBill& bill, const Graph& graph, const std::string& by) {
  Json list = Json::array();
  for (std::size_t i = 0; i < graph.bars.size(); ++i) {
    const GraphBar& each = graph.bars[i];
    list.push_back({{"label", each.label},
                    {"amount", floatJson(&graph.amounts[i])},
                    {"amountText", each.amountText},
                    {"height", floatJson(static_cast<float>(each.height))},
                    {"image", each.image}});
  }
  printJson(session.console, {{"id", bill.bid}, {"name", bill.name()}, {"by", by}, {"bars", list}});
}

/// As an absolute path. Only a picture is replaced: a slip shall not cost another file.
std::string pictureInput(const std::string& text) {
  const std::string path = absolutePath(text);
  if (!path.ends_with(".svg")) wrongUsage(sentence("\"{}\" is no name for a picture; it must end in .svg.", text));
  return path;
}

void savePicture(Session& session, const ListedBill& bill, const Graph& graph, const std::string& path) {
  const std::string picture = svgOf(bill.name(), graph.bars);
  session.write([&] { (void)session.platform.files.save(path, picture); });
}

void drawGraph(Session& session, const Options& options) {
  const std::string path = options.svg ? pictureInput(*options.svg) : std::string();
  const ListedBill bill = findBill(session.platform, options.bill, {std::begin(allGroups), std::end(allGroups)});
  const bool byMonth = options.by == "month";
  const Graph graph = graphOf(session.platform, bill, byMonth);
  if (options.svg) savePicture(session, bill, graph, path);
  if (session.json) return printGraphJson(session, bill, graph, options.by);
  if (options.svg) return session.console.line(printable(sentence("Drew \"{}\": {}", bill.name(), path)));
  if (session.console.interactive() && paymentsOf(bill).empty())
    return session.console.line(printable(sentence("\"{}\" has no payments.", bill.name())));
  printGraph(session, graph, byMonth);
}

}  // namespace

void addGraph(CLI::App& app, Invocation& invocation) {
  auto options = std::make_shared<Options>();
  CLI::App* command = addCommand(app, invocation,
                                 {"graph", marked("Draw what was paid for a bill, the newest first"),
                                  "tallyvane graph Electricity --by payment --svg electricity.svg"},
                                 [options](Session& session) { drawGraph(session, *options); });
  command->add_option("BILL", options->bill, billHelp)->required();
  command->add_option("--by", options->by, "A bar for each of the last 24 months (month) or 23 payments (payment)")
      ->check(CLI::IsMember({"month", "payment"}));
  command->add_option("--svg", options->svg, "Save the bars as a picture; one that is there is replaced")
      ->type_name("FILE");
}

}  // namespace tallyvane::cli
