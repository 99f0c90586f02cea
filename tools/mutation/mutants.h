// Put in front of a source file that carries mutants, each behind a switch of its own: chosen(17) says whether mutant
// 17 is on, and takes down that a test came by.
#pragma once

#include <type_traits>

namespace mutation {

extern int number;
extern unsigned char* visits;

inline bool isChosen(int mutant)
{
    visits[mutant] = 1;
    return mutant == number;
}

#ifdef MUTANTS_AT_RUN_TIME
constexpr bool chosen(int mutant)
{
    return mutant >= 0 && isChosen(mutant);
}
#else
// What the compiler works out is as written.
constexpr bool chosen(int mutant)
{
    return !std::is_constant_evaluated() && isChosen(mutant);
}
#endif

} // namespace mutation
