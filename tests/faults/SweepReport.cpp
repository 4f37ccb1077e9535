#include "tests/faults/SweepReport.hpp"

#include <iomanip>
#include <nlohmann/json.hpp>
#include <ostream>
#include <stdexcept>

namespace fault_test {

namespace {

using Json = nlohmann::ordered_json;

constexpr int kindWidth = 24;
constexpr int numberWidth = 9;
constexpr int outcomeWidth = 21;

std::array<std::string, numberOfOutcomes> outcomeNames() {
    std::array<std::string, numberOfOutcomes> names;
    for (std::size_t i = 0; i < names.size(); ++i) {
        names.at(i) = nameOf(static_cast<Outcome>(i));
    }
    return names;
}

Json toJson(FaultCount const& count) {
    Json outcomes = Json::object();
    auto const names = outcomeNames();
    for (std::size_t i = 0; i < names.size(); ++i) {
        outcomes[names.at(i)] = count.outcomes.at(i);
    }
    return {{"runs", count.runs},
            {"outcomes", outcomes},
            {"mostAccesses", count.mostAccesses},
            {"longestSeconds", count.longestSeconds},
            {"wrong", count.wrong}};
}

FaultCount countFrom(Json const& json) {
    FaultCount count;
    count.runs = json.at("runs");
    auto const names = outcomeNames();
    for (std::size_t i = 0; i < names.size(); ++i) {
        count.outcomes.at(i) = json.at("outcomes").at(names.at(i));
    }
    count.mostAccesses = json.at("mostAccesses");
    count.longestSeconds = json.at("longestSeconds");
    count.wrong = json.at("wrong").get<std::vector<std::string>>();
    return count;
}

Json toJson(SweepReport const& report) {
    Json kinds = Json::object();
    for (auto const& [kind, count] : report.table) {
        kinds[kind] = toJson(count);
    }
    return {{"subject", report.subject},
            {"unit", report.unit},
            {"size", report.size},
            {"stride", report.stride},
            {"kinds", kinds}};
}

SweepReport reportFrom(Json const& json) {
    SweepReport report;
    report.subject = json.at("subject");
    report.unit = json.at("unit");
    report.size = json.at("size");
    report.stride = json.at("stride");
    for (auto const& [kind, count] : json.at("kinds").items()) {
        report.table[kind] = countFrom(count);
    }
    return report;
}

void printLine(std::ostream& out, std::string const& name, FaultCount const& count) {
    out << "  " << std::left << std::setw(kindWidth) << name << std::right << std::setw(numberWidth)
        << count.runs;
    for (std::uint64_t const number : count.outcomes) {
        out << std::setw(outcomeWidth) << number;
    }
    out << std::setw(numberWidth) << std::fixed << std::setprecision(1) << count.longestSeconds << " s\n";
    for (std::string const& reason : count.wrong) {
        out << "    " << reason << '\n';
    }
}

} // namespace

void print(std::ostream& out, std::vector<SweepReport> const& reports) {
    out << "  " << std::left << std::setw(kindWidth) << "fault" << std::right << std::setw(numberWidth)
        << "runs";
    for (std::string const& name : outcomeNames()) {
        out << std::setw(outcomeWidth) << name;
    }
    out << std::setw(numberWidth) << "longest" << '\n';
    FaultCount total;
    for (SweepReport const& report : reports) {
        out << report.subject << ": " << report.size << ' ' << report.unit;
        if (report.stride > 1) {
            out << ", one in " << report.stride << " hit";
        }
        out << '\n';
        for (auto const& [kind, count] : report.table) {
            printLine(out, kind, count);
            total.add(count);
        }
    }
    total.wrong.clear();
    out << "all\n";
    printLine(out, "all", total);
}

std::string asJson(std::vector<SweepReport> const& reports) {
    Json list = Json::array();
    for (SweepReport const& report : reports) {
        list.push_back(toJson(report));
    }
    constexpr int indent = 2;
    return Json{{"sweeps", list}}.dump(indent) + "\n";
}

std::vector<SweepReport> fromJson(std::string const& text) {
    try {
        std::vector<SweepReport> reports;
        Json const all = Json::parse(text);
        for (Json const& json : all.at("sweeps")) {
            reports.push_back(reportFrom(json));
        }
        return reports;
    } catch (Json::exception const& error) {
        throw std::runtime_error(error.what());
    }
}

bool isAnythingWrong(std::vector<SweepReport> const& reports) {
    for (SweepReport const& report : reports) {
        for (auto const& [kind, count] : report.table) {
            if (count.outcomes.at(static_cast<std::size_t>(Outcome::wrong)) > 0) {
                return true;
            }
        }
    }
    return false;
}

} // namespace fault_test
