// Reads model, image and font files that come from anywhere.
#pragma once

#include "reference/machinery/faces/face.h"

#include <osg/Image>
#include <osg/Node>
#include <osgDB/Options>

#include <string>

namespace hyxOSG {

/// Something read from a file, or why it could not be, in words that follow the file's name.
template <class Thing>
struct Reading {
    osg::ref_ptr<Thing> thing;
    std::string fault;
};

/// Reads a file that `findDataFile` has found. All that it names is looked for in its own folder and below. What comes
/// back is whole: elements name vertices that are there, numbers are finite, images have their pixels. Files of kinds
/// that have not proven themselves are read in a process of their own first, and here only when that went well.
/// A pending interrupt ends the reading without a thing.
Reading<osg::Node> readModel(std::string const& path, osgDB::Options const* options);
Reading<osg::Image> readPicture(std::string const& path);
Reading<Face> readFont(std::string const& path);

/// The same without the trial, for the process that makes it.
Reading<osg::Node> readModelHere(std::string const& path, osgDB::Options const* options);
Reading<osg::Image> readPictureHere(std::string const& path);
Reading<Face> readFontHere(std::string const& path);

} // namespace hyxOSG
