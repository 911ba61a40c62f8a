// Texts that are drawn as they are written.
#pragma once

#include <osg/Camera>
#include <osg/CullStack>
#include <osgText/Text>

#include <map>
#include <string>

namespace hyxOSG {

/// A text whose letters are ordered and joined from what is written, and whose glyphs are made as large as they are
/// drawn.
class Lettering : public osgText::Text {
public:
    Lettering();
    Lettering(Lettering const& other, osg::CopyOp const& copying = osg::CopyOp::SHALLOW_COPY);

    osg::Object* cloneType() const override { return new Lettering; }

    osg::Object* clone(osg::CopyOp const& copying) const override { return new Lettering(*this, copying); }

    /// What is shown from now on: UTF-8, in the order in which it is read aloud. Throws as `drawnText`.
    void write(std::string const& text);

    std::string const& written() const { return m_written; }

    using osgText::Text::accept;
    void accept(osg::NodeVisitor& visitor) override;

private:
    struct Look {
        unsigned int resolution = 0; ///< that a camera's picture wants, pixels
        unsigned int time = 0;       ///< counted in views
    };

    float heightIn(osg::CullStack& view) const;
    unsigned int resolutionIn(osg::CullStack& view);
    void fitResolution(osg::CullStack& view, osg::Camera const* camera);

    std::string m_written;
    std::map<osg::Camera const*, Look> m_looks;
    unsigned int m_time = 0;
    bool m_fitted = false;
};

} // namespace hyxOSG
