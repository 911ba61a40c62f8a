// Fonts that take the letters they lack from other ones.
#pragma once

#include <osgText/Font>

namespace hyxOSG {

/// A font that takes letters that `own` lacks from the installed fonts: from the first that has them, in the order in
/// which the system's list finds them alike in family and style, and fit for the user's language. A letter that none
/// has is told of with the package to install, once a package.
class FallbackFont : public osgText::Font {
public:
    explicit FallbackFont(osg::ref_ptr<osgText::Font> const& own);

    /// The same for texts that face the eye. Anisotropic filters, which keep slanting texts legible, blur those:
    /// software renderers take a round mean of three pixels.
    osg::ref_ptr<osgText::Font> unfiltered();

    void resizeGLObjectBuffers(unsigned int count) override;
    void releaseGLObjects(osg::State* state) const override;

protected:
    ~FallbackFont() override;

private:
    class Sources;
    explicit FallbackFont(Sources* sources);

    osg::ref_ptr<Sources> m_sources;
    osg::ref_ptr<osgText::Font> m_unfiltered;
};

} // namespace hyxOSG
