// Reads MJCF files: settings, defaults, and the sections in their order.
#include "reference/hyxtavlang/mjcf_context.h"
#include "reference/hyxtavlang/resource_paths.h"

#include <algorithm>
#include <filesystem>

namespace hyxtavlang {
namespace {

bool isActuator(std::string const& kind) {
    static std::set<std::string> const kinds{"general", "motor",  "position", "velocity", "intvelocity",
                                             "damper",  "muscle", "cylinder", "adhesion", "plugin"};
    return kinds.count(kind) > 0;
}

std::string kindOf(MjcfElement const& element) {
    return isActuator(element.name()) ? "actuator" : element.name();
}

void readCompiler(MjcfContext& context, MjcfElement const& element) {
    MjcfEntry const entry(element, {});
    MjcfCompiler& compiler = context.compiler;
    std::string const angle = entry.text("angle", compiler.angles.degrees ? "degree" : "radian");
    if (angle != "degree" && angle != "radian")
        entry.fail("expected degree or radian in \"angle\", not \"" + angle + "\"");
    compiler.angles.degrees = angle == "degree";
    compiler.angles.sequence = entry.text("eulerseq", compiler.angles.sequence);
    if (compiler.angles.sequence.size() != 3 ||
        compiler.angles.sequence.find_first_not_of("xyzXYZ") != std::string::npos)
        entry.fail("expected three of x, y, z in \"eulerseq\"");
    if (entry.text("coordinate", "local") != "local")
        entry.fail("expected local in \"coordinate\"; global places are of versions before 2.3.4");
    compiler.autolimits = entry.flag("autolimits", compiler.autolimits);
    compiler.inertiaFromShapes = entry.text("inertiafromgeom", compiler.inertiaFromShapes);
    compiler.totalMass = entry.number("settotalmass", compiler.totalMass);
    compiler.leastMass = entry.number("boundmass", compiler.leastMass);
    compiler.leastInertia = entry.number("boundinertia", compiler.leastInertia);
    compiler.balancesInertia = entry.flag("balanceinertia", compiler.balancesInertia);
    if (entry.has("inertiagrouprange"))
        compiler.inertiaGroups = entry.numbers("inertiagrouprange", 2, 2);
    compiler.meshFolder = entry.text("meshdir", entry.text("assetdir", compiler.meshFolder));
    compiler.textureFolder = entry.text("texturedir", entry.text("assetdir", compiler.textureFolder));
    context.remarkRest(entry);
}

void readSettings(MjcfContext& context, MjcfElement const& element) {
    MjcfEntry const entry(element, {});
    auto const settings = std::make_shared<tavlang::Simulation::Settings>();
    settings->line = entry.line();
    settings->hasGravity = entry.has("gravity");
    settings->gravity = entry.vector("gravity", settings->gravity);
    settings->timeStep = entry.number("timestep", 0);
    context.tree->children.push_back(settings);
    context.remarkRest(entry);
}

/// Sections may stand in any order and several times.
class Sections {
public:
    explicit Sections(MjcfContext& context)
        : m_context(context), m_all(context.document.children(context.document.root())) {}

    template <class Read>
    void each(char const* name, Read read) {
        m_known.insert(name);
        for (MjcfElement const& section : m_all)
            if (section.name() == name)
                read(section);
    }

    void remarkOthers() {
        static std::set<std::string> const silent{"size", "visual", "statistic"};
        for (MjcfElement const& section : m_all)
            if (!m_known.count(section.name()) && !silent.count(section.name()))
                m_context.remark("<" + section.name() + ">", section.file, section.xml->GetLineNum());
    }

private:
    MjcfContext& m_context;
    std::vector<MjcfElement> m_all;
    std::set<std::string> m_known;
};

} // namespace

void MjcfDefaults::read(MjcfDocument& document, MjcfElement const& element, std::string const& parent) {
    std::string const given = element.text("class");
    std::string const name = !given.empty() ? given : "main";
    if (!parent.empty()) {
        if (given.empty())
            throw ModelError(element.file + ":" + std::to_string(element.xml->GetLineNum()) +
                             ": <default> needs a \"class\"");
        m_classes[name] = m_classes[parent];
    } else if (!m_classes.count(name)) {
        m_classes[name] = m_classes["main"];
    }
    // What a class says of itself counts for the classes in it, wherever these stand.
    std::vector<MjcfElement> const children = document.children(element);
    for (MjcfElement const& child : children)
        if (child.name() != "default")
            for (auto const* attribute = child.xml->FirstAttribute(); attribute; attribute = attribute->Next())
                m_classes[name][kindOf(child)][attribute->Name()] = attribute->Value();
    if (parent.empty() && name != "main")
        m_classes["main"] = m_classes[name]; // the outermost class is that of all elements, whatever its name
    for (MjcfElement const& child : children)
        if (child.name() == "default")
            read(document, child, name);
}

MjcfAttributes const& MjcfDefaults::of(std::string const& className, MjcfElement const& element) const {
    static MjcfAttributes const none;
    auto const found = m_classes.find(className.empty() ? "main" : className);
    if (found == m_classes.end())
        throw ModelError(element.file + ":" + std::to_string(element.xml->GetLineNum()) + ": there is no class \"" +
                         className + "\" of defaults");
    auto const kind = found->second.find(kindOf(element));
    return kind == found->second.end() ? none : kind->second;
}

MjcfEntry MjcfContext::entry(MjcfElement const& element, std::string const& childClass) const {
    std::string const own = element.text("class");
    return MjcfEntry(element, defaults.of(own.empty() ? childClass : own, element));
}

void MjcfContext::remark(std::string const& what, std::string const& file, int line) {
    if (m_remarked.insert(what).second)
        tree->annotations.push_back(std::make_shared<tavlang::Annotation>(what + " is not carried over", file, line));
}

void MjcfContext::remarkRest(MjcfEntry const& entry) {
    for (std::string const& key : entry.rest())
        remark("\"" + key + "\" of <" + entry.kind() + ">", entry.file(), entry.line());
}

std::string MjcfContext::find(MjcfEntry const& entry, std::string const& folder, std::string const& file) const {
    namespace fs = std::filesystem;
    fs::path const base = fs::absolute(document.root().file).parent_path();
    for (fs::path const& candidate : {base / folder / file, base / file})
        if (fs::is_regular_file(candidate))
            return candidate.lexically_normal().string();
    std::string const found = findResource((fs::path(folder) / file).string(), document.root().file, searchPaths);
    if (found.empty())
        entry.fail("names the file \"" + file + "\", which was not found");
    return found;
}

ModelTree readMjcf(std::string const& path, std::vector<std::string> const& searchPaths) {
    MjcfContext context(path, searchPaths);
    std::string const name = context.document.root().text("model");
    context.tree->name = name.empty() ? "model" : name;
    context.tree->line = context.document.root().xml->GetLineNum();
    Sections sections(context);
    sections.each("compiler", [&](MjcfElement const& section) { readCompiler(context, section); });
    sections.each("option", [&](MjcfElement const& section) { readSettings(context, section); });
    sections.each("default", [&](MjcfElement const& section) { context.defaults.read(context.document, section, ""); });
    sections.each("asset", [&](MjcfElement const& section) { readMjcfAssets(context, section); });
    sections.each("actuator", [&](MjcfElement const& section) { readMjcfActuators(context, section); });
    std::vector<MjcfElement> worlds;
    sections.each("worldbody", [&](MjcfElement const& section) { worlds.push_back(section); });
    readMjcfBodies(context, worlds);
    connectMjcfActuators(context);
    for (char const* section : {"equality", "contact", "keyframe"})
        sections.each(section, [&](MjcfElement const& found) { readMjcfRelations(context, found); });
    sections.remarkOthers();
    return context.tree;
}

} // namespace hyxtavlang
