#include "cli/terminal/Bars.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "cli/terminal/DisplayText.h"
#include "foundation/Markup.h"
#include "foundation/NumberReading.h"
#include "storage/Keys.h"

namespace tallyvane::cli {

namespace {

constexpr double barStep = 36;  // from one bar to the next
constexpr double barWidth = 24;
constexpr double plotHeight = 200;
constexpr double margin = 20;
constexpr double titleHeight = 40;
constexpr double amountColumn = 7;  // the widest that a column of the amounts' small letters is

/// A number from 0 to 1, whatever the graph's height is.
double shown(double part) { return part > 0 ? std::min(part, 1.0) : 0; }

std::string_view svgColourOf(const GraphBar& bar) {
  if (bar.image == "orchidbar.png") return "#b455c4";
  return bar.image == "blackbar.png" ? "#2b2b2b" : "#b3b3b3";
}

std::string escaped(std::string_view text) { return markupEscaped(printable(text)); }

/// One bar with its amount above, turned upwards, and its label below.
std::string svgBar(const GraphBar& bar, double x, double plotTop) {
  const double height = shown(bar.height) * plotHeight;
  const double top = plotTop + plotHeight - height;
  const double middle = x + barWidth / 2;
  const std::string label = escaped(bar.label);
  const std::string amount = escaped(bar.amountText);
  return fmt::format(
      "  <g>\n"
      "    <title>{}</title>\n"
      "    <rect x=\"{:.1f}\" y=\"{:.1f}\" width=\"{:.1f}\" height=\"{:.1f}\" fill=\"{}\"/>\n"
      "    <text x=\"{:.1f}\" y=\"{:.1f}\" transform=\"rotate(-90 {:.1f} {:.1f})\" class=\"amount\">{}</text>\n"
      "    <text x=\"{:.1f}\" y=\"{:.1f}\" class=\"label\">{}</text>\n"
      "  </g>\n",
      label.empty() ? amount : label + ": " + amount, x, top, barWidth, height, svgColourOf(bar), middle + 4, top - 5,
      middle + 4, top - 5, amount, middle, plotTop + plotHeight + 18, label);
}

/// Below the title and the amount of a bar as high as the plot.
double plotTopFor(const std::vector<GraphBar>& bars) {
  int widest = 0;
  for (const GraphBar& each : bars) widest = std::max(widest, displayWidth(each.amountText));
  return titleHeight + amountColumn * widest;
}

const Array& listIn(const Dictionary& graph, std::string_view key) {
  static const Array none;
  const Array* list = graph.get<Array>(key);
  return list == nullptr ? none : *list;
}

}  // namespace

std::string bar(double part, int width) {
  static constexpr std::array<const char*, 8> ends = {"", "▏", "▎", "▍", "▌", "▋", "▊", "▉"};
  const auto eighths = static_cast<std::size_t>(std::lround(shown(part) * 8 * std::max(width, 0)));
  std::string text;
  for (std::size_t column = 0; column < eighths / 8; ++column) text += "█";
  return text + ends[eighths % 8];
}

std::vector<GraphBar> barsOf(const Dictionary& graph) {
  const std::vector<std::string> labels = stringsOf(&listIn(graph, key::Labels));
  const std::vector<std::string> amounts = stringsOf(&listIn(graph, key::Amounts));
  const std::vector<std::string> images = stringsOf(&listIn(graph, key::Images));
  const Array& heights = listIn(graph, key::Heights);
  std::vector<GraphBar> bars;
  for (std::size_t i = 0; i < labels.size(); ++i)
    bars.push_back({labels[i], amounts.at(i), doubleValue(&heights.at(i)), images.at(i)});
  return bars;
}

Colour colourOf(const GraphBar& bar) {
  if (bar.image == "orchidbar.png") return Colour::magenta;
  return bar.image == "blackbar.png" ? Colour::none : Colour::dim;
}

std::string svgOf(const std::string& title, const std::vector<GraphBar>& bars) {
  const double width = 2 * margin + barStep * static_cast<double>(bars.size());
  const double plotTop = plotTopFor(bars);
  const double height = plotTop + plotHeight + 2 * margin;
  std::string svg = fmt::format(
      "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 {0:.0f} {1:.0f}\" width=\"{0:.0f}\" height=\"{1:.0f}\" "
      "role=\"img\">\n"
      "  <style>text {{ font: 12px sans-serif; fill: #2b2b2b }} .amount {{ font-size: 11px }} .label {{ text-anchor: "
      "middle }} .title {{ font-size: 16px }}</style>\n"
      "  <title>{2}</title>\n"
      "  <rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n"
      "  <text x=\"{3:.0f}\" y=\"24\" class=\"title\">{2}</text>\n",
      width, height, escaped(title), margin);
  double x = margin + (barStep - barWidth) / 2;
  for (auto each = bars.rbegin(); each != bars.rend(); ++each, x += barStep) svg += svgBar(*each, x, plotTop);
  svg +=
      fmt::format("  <line x1=\"{0:.0f}\" y1=\"{1:.0f}\" x2=\"{2:.0f}\" y2=\"{1:.0f}\" stroke=\"#2b2b2b\"/>\n</svg>\n",
                  margin, plotTop + plotHeight, width - margin);
  return svg;
}

}  // namespace tallyvane::cli
