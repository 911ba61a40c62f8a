// Keeps who waits itself, and lets all others wait.
#include "binding/vocabulary/own_turns.h"

#include "binding/runtime/user_code.h"
#include "platform/hyxPython/native_work.h"

#include <algorithm>
#include <vector>

namespace vocabulary {

namespace {

std::vector<Form const*>& waiting_themselves() {
    static std::vector<Form const*> forms;
    return forms;
}

} // namespace

WaitThemselves::WaitThemselves(std::span<Declared const> rows) {
    for (Declared const& row : rows)
        for (std::size_t i = 0; i < row.function->form_count; ++i)
            waiting_themselves().push_back(&row.function->forms[i]);
}

void wait_before(Form const& form) {
    auto const& forms = waiting_themselves();
    if (std::find(forms.begin(), forms.end(), &form) == forms.end())
        hyxPython::waitForNativeWork();
}

bool watch_exit() {
    runtime::rest_for_good = hyxPython::restForGood;
    return hyxPython::watchExit();
}

} // namespace vocabulary
