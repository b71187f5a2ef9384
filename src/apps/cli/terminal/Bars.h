// Bars of a graph, in a terminal and as a picture.
#pragma once

#include <string>
#include <vector>

#include "cli/terminal/Console.h"
#include "foundation/Value.h"

namespace tallyvane::cli {

/// A bar as long as this part of the width, to an eighth of a column. What is no number is 0.
[[nodiscard]] std::string bar(double part, int width);

/// One position of the model's graph.
struct GraphBar {
  std::string label;
  std::string amountText;  ///< in the user's currency
  double height = 0;       ///< 0 to 1, of the tallest
  std::string image;       ///< the bar image that stands for its colour
};

/// The bars of a graph dictionary, the newest first.
[[nodiscard]] std::vector<GraphBar> barsOf(const Dictionary& graph);

/// Of this year's bars magenta, of last year's the terminal's own colour, older ones dim.
[[nodiscard]] Colour colourOf(const GraphBar& bar);

/// The bars from the oldest on the left to the newest on the right, with their labels and amounts.
[[nodiscard]] std::string svgOf(const std::string& title, const std::vector<GraphBar>& bars);

}  // namespace tallyvane::cli
