#include <examples/describe/Report.h>

#include <velum/core/StringFormat.h>
#include <velum/dates/NumberFormatSpec.h>
#include <velum/numerics/MultivariateStatistics.h>
#include <velum/numerics/PlanarRegression.h>
#include <velum/numerics/SpatialStatistics.h>
#include <velum/numerics/UnivariateStatistics.h>
#include <examples/common/Shown.h>

#include <algorithm>
#include <iomanip>
#include <numeric>
#include <ostream>

namespace vlm::describe {
namespace {

using examples::Shown;

constexpr int kDigits = 8;
constexpr std::size_t kLongestName = 24;
constexpr std::size_t kMostTogether = 50;
const NumberFormatSpec kFixed(NumberFormatSpec::Fixed, 4);

using Names = std::vector<std::string>;

// How many characters a UTF-8 text has.
std::size_t WidthOf(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

std::string Left(const std::string& text, std::size_t width) {
  return text + std::string(width - std::min(width, WidthOf(text)), ' ');
}

std::string Right(const std::string& text, std::size_t width) {
  return std::string(width - std::min(width, WidthOf(text)), ' ') + text;
}

std::string NumberText(double number, const NumberFormatSpec& spec) {
  return ToString(spec.GetFormat().c_str(), number);
}

void PrintHeading(std::ostream& out, const std::string& text) {
  out << "\n" << text << "\n" << std::string(WidthOf(text), '-') << "\n";
}

std::string PlaceOf(const Place& place) {
  return "row " + std::to_string(place.row) + " (line " + std::to_string(place.line) + ")";
}

std::string Counted(std::size_t count, const char* thing) {
  return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

std::string Joined(const Names& names) {
  constexpr std::size_t kTold = 20;
  std::string text;
  for (std::size_t i = 0; i < std::min(names.size(), kTold); ++i) {
    text += (i == 0 ? "" : ", ") + Shown(names[i], kLongestName);
  }
  if (names.size() > kTold) text += " and " + std::to_string(names.size() - kTold) + " more";
  return text;
}

Names NamesOf(const Table& table, const std::vector<std::size_t>& columns) {
  Names names;
  for (const std::size_t column : columns) {
    names.push_back(Shown(table.columns[column].name, kLongestName));
  }
  return names;
}

void PrintColumnNotes(std::ostream& out, const Column& column) {
  if (column.missing > 0) {
    out << Shown(column.name) << ": " << Counted(column.missing, "missing value") << " left out\n";
  }
  if (column.texts > 0) {
    out << Shown(column.name) << ": " << Counted(column.texts, "value")
        << (column.texts == 1 ? " that is no number" : " that are no numbers")
        << " left out, the first in " << PlaceOf(column.firstText) << ", column " << column.number
        << ": \"" << column.firstTextIs << "\"\n";
  }
}

// Largest variance first.
void PrintComponents(std::ostream& out, const RMatrix& components, const Names& names) {
  const unsigned count = components.nRows();
  std::vector<unsigned> order(count);
  std::iota(order.begin(), order.end(), 0u);
  std::stable_sort(order.begin(), order.end(), [&](unsigned a, unsigned b) {
    return components(a, count) > components(b, count);
  });
  double total = 0.0;
  for (unsigned i = 0; i < count; ++i) total += components(i, count);
  RMatrix shown(count + 2, count);
  Names rows = {"variance", "share"};
  rows.insert(rows.end(), names.begin(), names.end());
  Names columns;
  for (unsigned j = 0; j < count; ++j) {
    columns.push_back("component " + std::to_string(j + 1));
    shown(0, j) = components(order[j], count);
    shown(1, j) = shown(0, j) / total;
    for (unsigned i = 0; i < count; ++i) shown(i + 2, j) = components(i, order[j]);
  }
  PrintMatrix(out, shown, rows, columns);
}

void PrintTogether(std::ostream& out, const Table& table) {
  const Names names = NamesOf(table, table.described);
  PrintHeading(out, "Together");
  if (names.size() > kMostTogether) {
    out << "Of more than " << kMostTogether << " columns nothing is told; choose by --columns.\n";
    return;
  }
  const RMatrix rows = WholeRows(table, table.described);
  out << Counted(rows.nRows(), "row") << " of " << table.rows << " whole in all "
      << table.described.size() << " columns\n";
  if (rows.nRows() < 2) {
    out << "Fewer than two: nothing can be told of them.\n";
    return;
  }
  CMultivariateStatistics stats;
  Load(stats, rows);
  PrintHeading(out, "Correlation");
  PrintMatrix(out, stats.Correlation, names, names, kFixed);
  PrintHeading(out, "Rank correlation");
  PrintMatrix(out, stats.RankCorrelation, names, names, kFixed);
  PrintHeading(out, "Principal components");
  PrintComponents(out, stats.PrincipalComponents, names);
  PrintHeading(out, "Principal components of the columns scaled to a variance of 1");
  PrintComponents(out, ComputePrincipalComponents(stats.Correlation), names);
}

// The plane through points whose rows hold x, y and z.
CPlanarRegression PlaneThrough(const RMatrix& points) {
  const RVector mean = ComputeMean(points);
  double sums[3][3] = {};
  for (unsigned row = 0; row < points.nRows(); ++row) {
    for (unsigned i = 0; i < 3; ++i) {
      for (unsigned j = i; j < 3; ++j) {
        sums[i][j] += (points(row, i) - mean(i)) * (points(row, j) - mean(j));
      }
    }
  }
  CPlanarRegression plane;
  Load(plane, points.nRows(), mean(0), mean(1), mean(2), sums[0][0], sums[0][1], sums[0][2],
       sums[1][2], sums[1][1], sums[2][2]);
  return plane;
}

void PrintPlane(std::ostream& out, const RMatrix& points, const Names& names) {
  const CPlanarRegression plane = PlaneThrough(points);
  PrintHeading(out, "Least-squares plane of " + names[2]);
  RMatrix terms(3, 2);
  terms(0, 0) = plane.SlopeX;
  terms(0, 1) = plane.SlopeXError;
  terms(1, 0) = plane.SlopeY;
  terms(1, 1) = plane.SlopeYError;
  terms(2, 0) = plane.Intercept;
  terms(2, 1) = plane.InterceptError;
  PrintMatrix(out, terms, {"by " + names[0], "by " + names[1], "constant"},
              {"coefficient", "its error"});
  out << "RSquared            " << plane.RSquared << "\n"
      << "FRatio              " << plane.FRatio << "\n"
      << "MSResidual          " << plane.MSResidual << "\n";
}

void PrintSpatial(std::ostream& out, const Table& table) {
  const Names names = NamesOf(table, table.spatial);
  const RMatrix rows = WholeRows(table, table.spatial);
  const bool hasZ = names.size() == 3;
  std::vector<boost::tuple<double, double, double>> points;
  points.reserve(rows.nRows());
  for (unsigned i = 0; i < rows.nRows(); ++i) {
    points.emplace_back(rows(i, 0), rows(i, 1), hasZ ? rows(i, 2) : 0.0);
  }
  CSpatialStatistics stats;
  Load(stats, points.begin(), points.end());
  PrintHeading(out, "Points by " + Joined(names));
  out << Counted(rows.nRows(), "point") << " of " << Counted(table.rows, "row")
      << "; distances have the unit of these columns\n";
  if (points.empty()) return;
  out << "Density             " << stats.Density << "\n"
      << "ClarkEvansRatio     " << stats.ClarkEvansRatio;
  if (stats.ClarkEvansRatio < 1) out << " (below 1: the points cluster)";
  if (stats.ClarkEvansRatio > 1) out << " (above 1: the points keep apart)";
  out << "\nSkellamStatistic    " << stats.SkellamStatistic << "\n";
  PrintHeading(out, "Distance to the nearest neighbour");
  out << stats.NearestDistance;
  if (!hasZ) return;
  PrintHeading(out, "Difference of " + names[2] + " to the nearest neighbour");
  out << stats.NearestSeparation;
  PrintPlane(out, rows, names);
}

}  // namespace

void PrintMatrix(std::ostream& out, const RMatrix& matrix, const Names& rows, const Names& columns,
                 const NumberFormatSpec& spec) {
  constexpr std::size_t kLineWidth = 110;
  std::size_t nameWidth = 0;
  for (const std::string& name : rows) nameWidth = std::max(nameWidth, WidthOf(name));
  const auto widthOf = [&](unsigned j) {
    return std::max<std::size_t>(12, WidthOf(columns[j]) + 2);
  };
  for (unsigned begin = 0, end = 0; begin < matrix.nCols(); begin = end) {
    std::size_t lineWidth = nameWidth + widthOf(end++);
    while (end < matrix.nCols() && lineWidth + widthOf(end) <= kLineWidth) {
      lineWidth += widthOf(end++);
    }
    if (begin > 0) out << "\n";
    out << Left("", nameWidth);
    for (unsigned j = begin; j < end; ++j) out << Right(columns[j], widthOf(j));
    out << "\n";
    for (unsigned i = 0; i < matrix.nRows(); ++i) {
      out << Left(rows[i], nameWidth);
      for (unsigned j = begin; j < end; ++j)
        out << Right(NumberText(matrix(i, j), spec), widthOf(j));
      out << "\n";
    }
  }
}

void PrintNotes(std::ostream& out, const Table& table) {
  if (!table.leftOut.empty()) out << "Not columns of numbers: " << Joined(table.leftOut) << "\n";
  std::vector<std::size_t> told = table.described;
  told.insert(told.end(), table.spatial.begin(), table.spatial.end());
  std::sort(told.begin(), told.end());
  told.erase(std::unique(told.begin(), told.end()), told.end());
  for (const std::size_t column : told) PrintColumnNotes(out, table.columns[column]);
  if (table.ragged > 0) {
    out << Counted(table.ragged, "row") << (table.ragged == 1 ? " has" : " have")
        << " more or fewer fields than the first row's " << table.fields << ", the first "
        << PlaceOf(table.firstRagged) << " with " << table.firstRaggedFields << "\n";
  }
}

void PrintReport(std::ostream& out, const Table& table) {
  out << std::setprecision(kDigits);
  out << Counted(table.rows, "row") << ", " << Counted(table.fields, "column") << "\n";
  PrintNotes(out, table);
  for (const std::size_t described : table.described) {
    const Column& column = table.columns[described];
    PrintHeading(out, Shown(column.name));
    std::vector<double> numbers = column.Numbers();
    CUnivariateStatistics stats;
    Load(stats, numbers.begin(), numbers.end());
    out << stats;
  }
  if (table.described.size() > 1) PrintTogether(out, table);
  if (!table.spatial.empty()) PrintSpatial(out, table);
}

}  // namespace vlm::describe
