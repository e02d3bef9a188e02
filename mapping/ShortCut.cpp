#include "mapping/ShortCut.h"

#include <tuple>

bool operator==(const shortCut &a, const shortCut &b)
{
    const auto fields = [](const shortCut &s) {
        return std::tie(s.key1, s.key2, s.key3, s.label, s.channel, s.cc, s.v_on, s.v_off, s.note,
                        s.v_off_enable, s.knobcc, s.m01h, s.m3fh, s.m0_127);
    };
    return fields(a) == fields(b);
}
