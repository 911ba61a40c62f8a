// The control points of the standard colour scales.
#include "reference/hyxOSG/renderers/color_presets.h"

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>

namespace hyxOSG {
namespace {

// The published tables have 256 colours. What is kept is the fewest of them from which linear mixing gives back
// every other one to within one 255th in each channel.
struct ControlPoint {
    int index;
    std::uint32_t rgb;
};

constexpr ControlPoint rainbow[] = {
    {0, 0x8000ff},   {20, 0x583efd},  {37, 0x3670f8},  {50, 0x1c93f3},  {64, 0x00b5eb},
    {73, 0x12c8e6},  {81, 0x22d6e0},  {88, 0x30e1da},  {96, 0x40ecd4},  {105, 0x52f5cb},
    {112, 0x60fac5}, {119, 0x6efebe}, {127, 0x7effb5}, {136, 0x90feab}, {143, 0x9efaa2},
    {150, 0xacf59a}, {158, 0xbced8f}, {166, 0xcce385}, {174, 0xdcd67a}, {182, 0xecc86f},
    {191, 0xfeb562}, {205, 0xff934d}, {218, 0xff703a}, {233, 0xff4422}, {255, 0xff0000},
};
constexpr ControlPoint coolwarm[] = {
    {0, 0x3b4cc0},   {16, 0x4e68d8},  {32, 0x6282ea},  {48, 0x779af7},  {64, 0x8db0fe},  {80, 0xa3c2fe},
    {96, 0xb9d0f9},  {112, 0xccd9ed}, {128, 0xdddcdc}, {143, 0xebd3c6}, {151, 0xf1cdba}, {159, 0xf4c5ad},
    {167, 0xf7bca1}, {175, 0xf7b194}, {183, 0xf7a688}, {191, 0xf49a7b}, {200, 0xf08b6e}, {215, 0xe57058},
    {223, 0xde614d}, {239, 0xcb3e38}, {247, 0xc0282f}, {255, 0xb40426},
};
constexpr ControlPoint viridis[] = {
    {0, 0x440154},   {14, 0x481668},  {29, 0x482979},  {44, 0x443b84},  {57, 0x3e4a89},  {70, 0x38598c},
    {90, 0x2e6d8e},  {113, 0x26828e}, {129, 0x20928c}, {143, 0x1f9f88}, {154, 0x23a983}, {162, 0x2ab07f},
    {170, 0x35b779}, {179, 0x44bf70}, {188, 0x56c667}, {198, 0x6ccd5a}, {208, 0x84d44b}, {231, 0xc0df25},
    {238, 0xd2e21b}, {242, 0xdde318}, {246, 0xe7e419}, {250, 0xf1e51d}, {255, 0xfde725},
};
constexpr ControlPoint inferno[] = {
    {0, 0x000004},   {4, 0x02010a},   {11, 0x060419},  {18, 0x0d0829},  {29, 0x1c0c43},  {37, 0x290b55},
    {43, 0x340a5f},  {49, 0x3e0966},  {56, 0x4a0c6b},  {65, 0x59106e},  {73, 0x65156e},  {89, 0x7f1e6c},
    {106, 0x9a2865}, {123, 0xb43359}, {143, 0xd04545}, {156, 0xe05536}, {172, 0xef6c23}, {184, 0xf68013},
    {192, 0xf98e09}, {197, 0xfb9706}, {201, 0xfc9f07}, {206, 0xfca80d}, {213, 0xfbb61a}, {222, 0xf9c72f},
    {228, 0xf7d340}, {232, 0xf5db4c}, {236, 0xf3e35a}, {244, 0xf1f179}, {250, 0xf5f992}, {255, 0xfcffa4},
};
constexpr ControlPoint plasma[] = {
    {0, 0x0d0887},   {4, 0x19068c},   {11, 0x280592},  {33, 0x4e02a2},  {52, 0x6c00a8},
    {63, 0x7d03a8},  {71, 0x8808a6},  {88, 0xa01a9c},  {111, 0xbb3488}, {134, 0xd14e72},
    {170, 0xed7953}, {186, 0xf68d45}, {202, 0xfca338}, {216, 0xfeb82c}, {226, 0xfdc827},
    {236, 0xfad824}, {251, 0xf2f227}, {253, 0xf1f525}, {255, 0xf0f921},
};
constexpr ControlPoint grayscale[] = {
    {0, 0x000000},
    {255, 0xffffff},
};
constexpr ControlPoint blueWhiteRed[] = {
    {0, 0x0000ff},
    {127, 0xfefeff},
    {128, 0xfffefe},
    {255, 0xff0000},
};
constexpr ControlPoint cividis[] = {
    {0, 0x00224e},   {19, 0x00306f},  {21, 0x003170},  {23, 0x013271},  {28, 0x123570},  {34, 0x1e3a6f},
    {43, 0x2b406d},  {52, 0x36466c},  {66, 0x45506c},  {84, 0x565c6d},  {107, 0x6b6d72}, {126, 0x7b7a78},
    {147, 0x8f8a78}, {164, 0x9f9775}, {179, 0xaea371}, {192, 0xbcae6c}, {205, 0xc9b965}, {219, 0xd9c55c},
    {232, 0xe7d150}, {243, 0xf3db42}, {251, 0xfde334}, {252, 0xfee434}, {255, 0xfee838},
};
constexpr ControlPoint bone[] = {
    {0, 0x000000},
    {93, 0x515171},
    {190, 0xa6c6c6},
    {255, 0xffffff},
};
constexpr ControlPoint copper[] = {
    {0, 0x000000},
    {206, 0xfea166},
    {255, 0xffc77f},
};
constexpr ControlPoint afmhot[] = {
    {0, 0x000000}, {64, 0x800000}, {127, 0xfe7e00}, {191, 0xfffe7f}, {255, 0xffffff},
};

constexpr std::span<ControlPoint const> presets[] = {
    rainbow, coolwarm, viridis, inferno, plasma, grayscale, blueWhiteRed, cividis, bone, copper, afmhot,
};
constexpr int presetCount = static_cast<int>(std::size(presets));

osg::Vec4f colorOf(ControlPoint const& point) {
    return {((point.rgb >> 16) & 0xff) / 255.0f, ((point.rgb >> 8) & 0xff) / 255.0f, (point.rgb & 0xff) / 255.0f, 1.0f};
}

std::vector<osg::Vec4f> expand(std::span<ControlPoint const> points) {
    std::vector<osg::Vec4f> colors{colorOf(points.front())};
    for (std::size_t i = 1; i < points.size(); ++i) {
        auto const from = colorOf(points[i - 1]);
        auto const to = colorOf(points[i]);
        auto const steps = points[i].index - points[i - 1].index;
        for (int step = 1; step <= steps; ++step)
            colors.push_back(from + (to - from) * (static_cast<float>(step) / static_cast<float>(steps)));
    }
    return colors;
}

} // namespace

std::vector<osg::Vec4f> const& presetColors(int preset) {
    static std::vector<std::vector<osg::Vec4f>> const tables = [] {
        std::vector<std::vector<osg::Vec4f>> expanded;
        for (auto const& points : presets)
            expanded.push_back(expand(points));
        return expanded;
    }();
    if (preset < 0 || preset >= presetCount)
        throw std::invalid_argument("there is no colour preset " + std::to_string(preset) + ": use 0 to " +
                                    std::to_string(presetCount - 1));
    return tables[static_cast<std::size_t>(preset)];
}

} // namespace hyxOSG
