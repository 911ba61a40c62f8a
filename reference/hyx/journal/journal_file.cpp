// Loads what reads and writes journals.
#include "reference/hyx/journal/journal_file.h"

#include "reference/machinery/files/late_library.h"

namespace hyx {

JournalFormat const& journalFormat() {
    static auto const& format = **static_cast<JournalFormat const* const*>(
        findLate("libhyx_journal.so", "hyxJournalFormat", "what reads and writes journals"));
    return format;
}

} // namespace hyx
