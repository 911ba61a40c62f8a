// One handler at exit for all owners.
#include "reference/machinery/files/exit_work.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <map>
#include <utility>

namespace hyx {
namespace {

using Works = std::map<void const*, std::function<void()>>;

/// Never destroyed: needed by what ends after it would be.
Works& works() {
    static Works* const made = new Works;
    return *made;
}

void doAll() {
    while (!works().empty()) {
        std::function<void()> const work = std::move(works().extract(works().begin()).mapped());
        try {
            work();
        } catch (std::exception const& failure) {
            std::fprintf(stderr, "%s\n", failure.what());
        }
    }
}

} // namespace

void setExitWork(void const* owner, std::function<void()> work) {
    static bool const registered = std::atexit(doAll) == 0;
    if (work && registered)
        works()[owner] = std::move(work);
    else
        works().erase(owner);
}

} // namespace hyx
