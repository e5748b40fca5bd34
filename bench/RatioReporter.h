// A console reporter that also prints, at the end, the ratios of the
// library's rows to the peer's rows of each text, from the best run of each
// row, and names the lowest ratio of each column.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace zelvo_bench {

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  // A column: its heading, and the rows (after "text/") it divides.
  struct Column {
    std::string heading;
    std::string numerator;
    std::string denominator;
  };

  // Plain text, so that the report reads the same in a file as on a
  // terminal.
  explicit RatioReporter(std::vector<Column> columns)
      : ConsoleReporter(OO_None), columns_(std::move(columns)) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
      const auto rate = run.counters.find("bytes_per_second");
      if (rate == run.counters.end()) continue;
      std::string name = run.benchmark_name();
      const std::size_t repeats = name.find("/repeats:");
      if (repeats != std::string::npos) name.erase(repeats);
      const std::size_t slash = name.find('/');
      if (slash == std::string::npos) continue;
      const std::string text = name.substr(0, slash);
      if (best_.find(text) == best_.end()) order_.push_back(text);
      double& best = best_[text][name.substr(slash + 1)];
      if (rate->second.value > best) best = rate->second.value;
    }
    ConsoleReporter::ReportRuns(runs);
  }

  void Finalize() override {
    ConsoleReporter::Finalize();
    std::ostream& out = GetOutputStream();
    char cell[64];
    out << "\nRatios, from the best run of each row\n";
    std::snprintf(cell, sizeof cell, "%-16s", "text");
    out << cell;
    for (const Column& column : columns_) {
      std::snprintf(cell, sizeof cell, " %24s", column.heading.c_str());
      out << cell;
    }
    out << "\n";
    std::vector<std::pair<double, std::string>> lowest(columns_.size(),
                                                       {1e300, ""});
    for (const std::string& text : order_) {
      std::snprintf(cell, sizeof cell, "%-16s", text.c_str());
      out << cell;
      for (std::size_t i = 0; i < columns_.size(); ++i) {
        const double ratio = ratioOf(text, columns_[i]);
        if (ratio > 0 && ratio < lowest[i].first) lowest[i] = {ratio, text};
        if (ratio > 0)
          std::snprintf(cell, sizeof cell, " %24.2f", ratio);
        else
          std::snprintf(cell, sizeof cell, " %24s", "-");
        out << cell;
      }
      out << "\n";
    }
    out << "lowest:\n";
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      if (lowest[i].second.empty()) continue;
      std::snprintf(cell, sizeof cell, "%.2f", lowest[i].first);
      out << "  " << columns_[i].heading << ": " << cell << " ("
          << lowest[i].second << ")\n";
    }
  }

 private:
  // The ratio of the column's rows for text, or 0 if either is missing.
  double ratioOf(const std::string& text, const Column& column) const {
    const auto rows = best_.find(text);
    if (rows == best_.end()) return 0;
    const auto top = rows->second.find(column.numerator);
    const auto bottom = rows->second.find(column.denominator);
    if (top == rows->second.end() || bottom == rows->second.end() ||
        bottom->second <= 0)
      return 0;
    return top->second / bottom->second;
  }

  std::vector<Column> columns_;
  std::vector<std::string> order_;
  std::map<std::string, std::map<std::string, double>> best_;
};

}  // namespace zelvo_bench
