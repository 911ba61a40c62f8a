// Meshes, height fields, textures and materials of MJCF files.
#include "reference/hyxtavlang/mjcf_context.h"

#include <osgDB/ReadFile>

#include <algorithm>
#include <filesystem>

namespace hyxtavlang {
namespace {

using tavlang::Physics3D::Geometries::HeightField;

/// Without a name an asset has that of its file.
std::string assetName(MjcfEntry const& entry) {
    return entry.name().empty() ? std::filesystem::path(entry.text("file")).stem().string() : entry.name();
}

std::vector<double> heightsOfPicture(MjcfContext& context, MjcfEntry const& entry, HeightField& field) {
    std::string const file = context.find(entry, context.compiler.meshFolder, entry.text("file"));
    osg::ref_ptr<osg::Image> const image = osgDB::readRefImageFile(file);
    if (!image)
        entry.fail("names the file \"" + file + "\", which cannot be read as a picture");
    field.columns = static_cast<unsigned>(image->s());
    field.rows = static_cast<unsigned>(image->t());
    std::vector<double> heights;
    for (unsigned row = 0; row < field.rows; ++row)
        for (unsigned column = 0; column < field.columns; ++column)
            heights.push_back(image->getColor(column, row).r());
    return heights;
}

/// Heights count from the lowest, and the greatest is as high as the size says.
void spread(std::vector<double>& heights, double height) {
    auto const [lowest, highest] = std::minmax_element(heights.begin(), heights.end());
    double const least = *lowest, range = *highest - least;
    for (double& value : heights)
        value = range > 0 ? (value - least) / range * height : 0;
}

/// Numbers stand in the file as one sees them from above: the row of the greatest y comes first.
std::vector<double> fromBelow(std::vector<double> const& fromAbove, std::size_t columns) {
    std::vector<double> heights(fromAbove.size());
    for (std::size_t i = 0; i + columns <= fromAbove.size(); i += columns)
        std::copy_n(fromAbove.begin() + static_cast<long>(i), columns, heights.end() - static_cast<long>(i + columns));
    return heights;
}

void readHeightField(MjcfContext& context, MjcfEntry const& entry) {
    auto const field = std::make_shared<HeightField>();
    std::vector<double> const size = entry.numbers("size", 4, 4);
    if (size.empty() || !(size[0] > 0 && size[1] > 0 && size[2] > 0))
        entry.fail("needs four positive numbers as \"size\"");
    if (entry.has("file")) {
        field->heights = heightsOfPicture(context, entry, *field);
    } else {
        double const most = 1 << 14;
        double const rows = entry.number("nrow", 0), columns = entry.number("ncol", 0);
        if (!(rows >= 2 && columns >= 2 && rows <= most && columns <= most))
            entry.fail("needs \"nrow\" and \"ncol\" from 2, or a \"file\"");
        field->rows = static_cast<unsigned>(rows);
        field->columns = static_cast<unsigned>(columns);
        field->heights = fromBelow(entry.list("elevation"), field->columns);
        if (field->heights.empty())
            field->heights.assign(std::size_t{field->rows} * field->columns, 0);
    }
    if (field->rows < 2 || field->columns < 2 || field->heights.size() != std::size_t{field->rows} * field->columns)
        entry.fail("needs one number for each of " + std::to_string(field->rows) + " x " +
                   std::to_string(field->columns) + " places");
    spread(field->heights, size[2]);
    field->halfSizes[0] = size[0];
    field->halfSizes[1] = size[1];
    context.heightFields[assetName(entry)] = field;
}

void readMaterial(MjcfContext& context, MjcfEntry const& entry) {
    auto const material = std::make_shared<tavlang::Visuals::Material>();
    material->name = entry.name();
    material->line = entry.line();
    if (std::vector<double> const color = entry.numbers("rgba", 3, 4); !color.empty())
        for (std::size_t i = 0; i < color.size(); ++i)
            material->color[i] = static_cast<float>(color[i]);
    if (auto const texture = context.textures.find(entry.text("texture")); texture != context.textures.end())
        material->texture = texture->second;
    context.materials[entry.name()] = material;
}

void readTexture(MjcfContext& context, MjcfEntry const& entry) {
    if (!entry.has("file"))
        return context.remark("a texture without file", entry.file(), entry.line());
    if (entry.text("type", "cube") != "2d")
        return context.remark("a texture that is not 2d", entry.file(), entry.line());
    context.textures[assetName(entry)] = context.find(entry, context.compiler.textureFolder, entry.text("file"));
}

} // namespace

void readMjcfAssets(MjcfContext& context, MjcfElement const& section) {
    std::vector<MjcfElement> const elements = context.document.children(section);
    for (MjcfElement const& element : elements)
        if (element.name() == "texture")
            readTexture(context, context.entry(element));
    for (MjcfElement const& element : elements) {
        MjcfEntry const entry = context.entry(element);
        if (element.name() == "mesh")
            context.meshes.emplace(assetName(entry), entry);
        else if (element.name() == "hfield")
            readHeightField(context, entry);
        else if (element.name() == "material")
            readMaterial(context, entry);
        else if (element.name() != "texture")
            context.remark("<" + element.name() + "> of <asset>", entry.file(), entry.line());
    }
}

std::shared_ptr<tavlang::Visuals::Material> readMjcfLook(MjcfContext const& context, MjcfEntry const& entry) {
    std::shared_ptr<tavlang::Visuals::Material> look;
    if (entry.has("material")) {
        auto const found = context.materials.find(entry.text("material"));
        if (found == context.materials.end())
            entry.fail("names the material \"" + entry.text("material") + "\", which is not there");
        look = found->second;
    }
    constexpr float gray = 0.5f;
    std::vector<double> color = entry.numbers("rgba", 3, 4);
    if (look && (color.empty() || color == std::vector<double>{gray, gray, gray, 1}))
        return look;
    auto const own = std::make_shared<tavlang::Visuals::Material>();
    own->color = hyx::Vec4f(gray, gray, gray, 1);
    for (std::size_t i = 0; i < color.size(); ++i)
        own->color[i] = static_cast<float>(color[i]);
    return own;
}

} // namespace hyxtavlang
