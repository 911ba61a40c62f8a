"""Messages of _hyxOSG's functions, to the character."""

import _hyxOSG as m
import hyx
import hyxOSG
import osg
import pytest

NODE, LEGEND, TEXT = hyxOSG.GeometryNode(), m.new_LidarOutputRendererLegend(), hyxOSG.Text()
A = osg.Vec3f(0, 0, 0)

OVERLOADS = "Wrong number or type of arguments for overloaded function '{}'.\n  Possible C/C++ prototypes are:\n"
CREATE_GRID = OVERLOADS.format("createGrid") + (
    "    hyxOSG::createGrid(unsigned int,unsigned int,osg::Vec3 const &,osg::Vec3 const &,osg::Vec3 const &,bool)\n"
    "    hyxOSG::createGrid(unsigned int,unsigned int,osg::Vec3 const &,osg::Vec3 const &,osg::Vec3 const &)\n"
    "    hyxOSG::createGrid(unsigned int,unsigned int,hyx::Vec3 const &,hyx::Vec3 const &,hyx::Vec3 const &,"
    "osg::Group *)\n"
)
NEW_TEXT = OVERLOADS.format("new_Text") + (
    "    hyxOSG::Text::Text()\n"
    "    hyxOSG::Text::Text(hyx::String const &,hyx::Vec3 const &,hyx::Vec4 const &)\n"
    "    hyxOSG::Text::Text(hyx::String const &,hyx::Vec3 const &)\n"
    "    hyxOSG::Text::Text(hyx::String const &)\n"
)
LISTENER = OVERLOADS.format("new_GuiEventListener") + (
    "    hyxOSG::GuiEventListener::GuiEventListener(hyxSDK::GuiEventListener::ActivationMask)\n"
    "    hyxOSG::GuiEventListener::GuiEventListener(PyObject *)\n"
)
GET_ITEM = OVERLOADS.format("LidarOutputRendererLegend___getitem__") + (
    "    std::vector< hyxOSG::LidarOutputRendererLegendPoint >::__getitem__(SWIGPY_SLICEOBJECT *)\n"
    "    std::vector< hyxOSG::LidarOutputRendererLegendPoint >::__getitem__("
    "std::vector< hyxOSG::LidarOutputRendererLegendPoint >::difference_type) const\n"
)
INCR = (
    OVERLOADS.format("SwigPyIterator_incr")
    + "    swig::SwigPyIterator::incr(size_t)\n    swig::SwigPyIterator::incr()\n"
)


@pytest.mark.parametrize(
    "name, arguments, error, text",
    [
        ("delete_Text", (3,), TypeError, "in method 'delete_Text', argument 1 of type 'hyxOSG::Text *'"),
        (
            "delete_CameraData",
            ("x",),
            TypeError,
            "in method 'delete_CameraData', argument 1 of type 'hyxOSG::CameraData *'",
        ),
        (
            "GeometryNode_getAutoRemove",
            (TEXT,),
            TypeError,
            "in method 'GeometryNode_getAutoRemove', argument 1 of type 'hyxOSG::GeometryNode const *'",
        ),
        (
            "GeometryNode_clone",
            (NODE, None),
            TypeError,
            "invalid null reference in method 'GeometryNode_clone', argument 2 of type 'osg::CopyOp const &'",
        ),
        (
            "setUniformFloat",
            (NODE, None, 1.0),
            TypeError,
            "invalid null reference in method 'setUniformFloat', argument 2 of type 'std::string const &'",
        ),
        (
            "createSphere",
            (hyx.Vec3(), hyx.Vec4f(), 1.0),
            TypeError,
            "in method 'createSphere', argument 2 of type 'hyx::Vec4 const &'",
        ),
        (
            "createGrid",
            (10, 10, None, A, A),
            TypeError,
            "invalid null reference in method 'createGrid', argument 3 of type 'osg::Vec3 const &'",
        ),
        ("createGrid", (-1, 10, A, A, A), TypeError, CREATE_GRID),
        ("createGrid", (10, 10, A, A, A, 1), TypeError, CREATE_GRID),
        ("createGrid", (1, 2, 3, 4, 5, 6, 7), TypeError, "createGrid expected at most 6 arguments, got 7"),
        ("new_Text", (1,), TypeError, NEW_TEXT),
        (
            "new_GuiEventListener",
            (None, 2**31),
            OverflowError,
            "in method 'new_GuiEventListener', argument 2 of type 'hyxSDK::GuiEventListener::ActivationMask'",
        ),
        (
            "new_GuiEventListener",
            (1, 2, 3),
            TypeError,
            "new_GuiEventListener expected at most 2 arguments, got 3\nAdditional information:\n" + LISTENER,
        ),
        (
            "LidarOutputRendererLegend_push_back",
            (LEGEND, None),
            TypeError,
            "invalid null reference in method 'LidarOutputRendererLegend_push_back', argument 2 of type "
            "'std::vector< hyxOSG::LidarOutputRendererLegendPoint >::value_type const &'",
        ),
        ("LidarOutputRendererLegend___getitem__", (LEGEND, "x"), TypeError, GET_ITEM),
        ("SwigPyIterator_incr", (), TypeError, INCR),
        (
            "ImageCaptureBase_writeImage",
            (m.new_ImageCapture(), None, -1),
            OverflowError,
            "in method 'ImageCaptureBase_writeImage', argument 3 of type 'hyx::Index'",
        ),
        (
            "disown_LidarOutputRendererColorFunctionCallback",
            (3,),
            TypeError,
            "in method 'disown_LidarOutputRendererColorFunctionCallback', argument 1 of type "
            "'hyxOSG::LidarOutputRendererColorFunctionCallback *'",
        ),
    ],
)
def test_message(name, arguments, error, text):
    with pytest.raises(error) as caught:
        getattr(m, name)(*arguments)
    assert str(caught.value) == text
