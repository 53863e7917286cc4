#include "files/WildcardMatch.h"

// Only the last "*" seen can need another try: whatever an earlier one could take instead, the last one can
// take as well. So it is enough to remember one place to come back to, with the run that its "*" has taken.

bool MatchesWildcard(ConstData name, ConstData pattern) {
    std::size_t const nameSize = name.Size();
    std::size_t const patternSize = pattern.Size();
    std::size_t inName = 0;
    std::size_t inPattern = 0;
    std::size_t behindStar = cAllOnes;
    std::size_t behindRun = 0;
    while (inName < nameSize) {
        if (inPattern < patternSize && pattern[inPattern] == '*') {
            behindStar = ++inPattern;
            behindRun = inName;
        } else if (inPattern < patternSize &&
                   (pattern[inPattern] == '?' || pattern[inPattern] == name[inName])) {
            ++inPattern;
            ++inName;
        } else if (behindStar != cAllOnes) {
            inPattern = behindStar;
            inName = ++behindRun;
        } else {
            return false;
        }
    }
    while (inPattern < patternSize && pattern[inPattern] == '*') ++inPattern;
    return inPattern == patternSize;
}
