#include "switchctl/statistics/RateLines.hpp"

#include <nlohmann/json.hpp>
#include <utility>

#include "switchctl/statistics/CounterRates.hpp"
#include "switchctl/statistics/SampleJson.hpp"

namespace switchctl::statistics {

RateLines::RateLines(std::ostream& out, Printer print, std::string file, std::string source)
    : _out(out), _print(std::move(print)), _file(std::move(file)), _source(std::move(source)) {}

void RateLines::show(chips::CounterSample const& before, chips::CounterSample const& after, double seconds) {
    nlohmann::ordered_json json{{"seconds", seconds}};
    json.update(SampleJson::of(after, _file, _source));
    for (std::size_t place = 0; place < after.ports.size(); ++place) {
        auto const rates = CounterRates::between(before.ports[place], after.ports[place], seconds);
        auto& counters = json["ports"][place]["counters"];
        for (std::size_t index = 0; index < rates.size(); ++index) {
            char const* const name = after.ports[place].getCounters()[index].name;
            if (rates[index].isCleared) {
                counters[name]["cleared"] = true;
            } else if (rates[index].counted) {
                counters[name]["perSecond"] = static_cast<double>(*rates[index].counted) / seconds;
            }
        }
    }
    _print(_out, json);
    _out << std::flush;
}

} // namespace switchctl::statistics
