// The table of film files.
#include "reference/hyxOSG/capture/film_container.h"

#include "reference/hyxOSG/capture/webp_film.h"

#include <algorithm>
#include <array>

namespace hyxOSG {
namespace {

using Options = std::vector<std::string>;

Options const fragments{"-movflags", "+frag_keyframe+empty_moov+default_base_moof", "-frag_duration",
                        "100000"};                    // microseconds
Options const clusters{"-cluster_time_limit", "100"}; // milliseconds

std::array const containers{
    FilmContainer{".mp4", 10000, fragments},
    FilmContainer{".m4v", 10000, fragments},
    FilmContainer{".mov", 10000, fragments},
    FilmContainer{".mkv", 1000, clusters, "", nullptr, {"gif"}},
    FilmContainer{".webm", 1000, clusters, "libvpx-vp9"},
    FilmContainer{".gif", 50, {}, "gif"}, // browsers slow down what is shown for less than two hundredths
    FilmContainer{".webp", 1000, {}, "libwebp", closeWebpFilm},
    FilmContainer{".avi", 1000, {}, "", nullptr, {"265", "hevc", "gif", "webp"}},
    FilmContainer{""},
};

} // namespace

FilmContainer const& filmContainer(std::string_view ending) {
    auto const* const found = std::find_if(containers.begin(), containers.end() - 1,
                                           [ending](FilmContainer const& known) { return known.ending == ending; });
    return *found;
}

} // namespace hyxOSG
