#include "time/TimeParsingAction.h"

#include <iterator>

namespace {

using Word = ReservedWord<TimeParsingAction>;
using enum TimeLanguage::PartOfSpeech;

constexpr Word cWords[] = {
    Word("a", {MilitaryZoneWord, 3600}),   Word("apr", {MonthWord, 4}),
    Word("aug", {MonthWord, 8}),           Word("b", {MilitaryZoneWord, 7200}),
    Word("c", {MilitaryZoneWord, 10800}),  Word("cdt", {NamedZoneWord, -18000}),
    Word("cst", {NamedZoneWord, -21600}),  Word("d", {MilitaryZoneWord, 14400}),
    Word("dec", {MonthWord, 12}),          Word("e", {MilitaryZoneWord, 18000}),
    Word("edt", {NamedZoneWord, -14400}),  Word("est", {NamedZoneWord, -18000}),
    Word("f", {MilitaryZoneWord, 21600}),  Word("feb", {MonthWord, 2}),
    Word("fri", {DayOfWeekWord, 5}),       Word("g", {MilitaryZoneWord, 25200}),
    Word("gmt", {NamedZoneWord, 0}),       Word("h", {MilitaryZoneWord, 28800}),
    Word("i", {MilitaryZoneWord, 32400}),  Word("jan", {MonthWord, 1}),
    Word("jul", {MonthWord, 7}),           Word("jun", {MonthWord, 6}),
    Word("k", {MilitaryZoneWord, 36000}),  Word("l", {MilitaryZoneWord, 39600}),
    Word("m", {MilitaryZoneWord, 43200}),  Word("mar", {MonthWord, 3}),
    Word("may", {MonthWord, 5}),           Word("mdt", {NamedZoneWord, -21600}),
    Word("mon", {DayOfWeekWord, 1}),       Word("mst", {NamedZoneWord, -25200}),
    Word("n", {MilitaryZoneWord, -3600}),  Word("nov", {MonthWord, 11}),
    Word("o", {MilitaryZoneWord, -7200}),  Word("oct", {MonthWord, 10}),
    Word("p", {MilitaryZoneWord, -10800}), Word("pdt", {NamedZoneWord, -25200}),
    Word("pst", {NamedZoneWord, -28800}),  Word("q", {MilitaryZoneWord, -14400}),
    Word("r", {MilitaryZoneWord, -18000}), Word("s", {MilitaryZoneWord, -21600}),
    Word("sat", {DayOfWeekWord, 6}),       Word("sep", {MonthWord, 9}),
    Word("sun", {DayOfWeekWord, 0}),       Word("t", {MilitaryZoneWord, -25200}),
    Word("thu", {DayOfWeekWord, 4}),       Word("tue", {DayOfWeekWord, 2}),
    Word("u", {MilitaryZoneWord, -28800}), Word("ut", {NamedZoneWord, 0}),
    Word("v", {MilitaryZoneWord, -32400}), Word("w", {MilitaryZoneWord, -36000}),
    Word("wed", {DayOfWeekWord, 3}),       Word("x", {MilitaryZoneWord, -39600}),
    Word("y", {MilitaryZoneWord, -43200}), Word("z", {MilitaryZoneWord, 0}),
};

static_assert(std::is_sorted(std::begin(cWords), std::end(cWords)), "the words are found by binary search");

} // namespace

ConstArrayOf<Word> TimeWords() {
    return ConstArrayOf<Word>(std::begin(cWords), std::end(cWords));
}
