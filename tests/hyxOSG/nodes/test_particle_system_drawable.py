"""The drawable of a particle system, and handles around textures."""

import _hyxOSG
import hyx
import hyxOSG
import osg
import pytest

DRAWABLE = hyxOSG.ParticleSystemDrawable


@pytest.fixture
def system():
    made = hyx.ParticleSystem()
    made.setParticleRadius(0.5)
    made.createParticle(hyx.Vec3(0, 0, 0), hyx.Vec3())
    return made


@pytest.fixture
def any_mode_afterwards():
    yield
    DRAWABLE.setAllowedRenderMode(DRAWABLE.TRIANGLES)


def test_modes_are_taken_and_checked(system):
    assert hyxOSG.ParticleSystemDrawable(system).getParticleShaderMode() == DRAWABLE.ROTATION_SPRITES
    made = hyxOSG.ParticleSystemDrawable(system, DRAWABLE.SPRITES, DRAWABLE.ALPHA_SPRITES)
    assert made.getParticleShaderMode() == DRAWABLE.ALPHA_SPRITES == 2
    made.setParticleShaderMode(DRAWABLE.SIMPLE_SPRITES)
    assert made.getParticleShaderMode() == 0
    for call in (
        lambda: made.setParticleShaderMode(3),
        lambda: hyxOSG.ParticleSystemDrawable(system, -1),
        lambda: DRAWABLE.setAllowedRenderMode(3),
    ):
        with pytest.raises(RuntimeError, match="mode -?[0-9]+ does not exist"):
            call()
    assert made.getParticleShaderMode() == 0


def test_the_drawable_knows_its_system_and_encloses_it(system):
    made = hyxOSG.ParticleSystemDrawable(system)
    assert made.getParticleSystem() == system
    assert list(made.getBoundingBox().upper()) == [0.5, 0.5, 0.5]
    assert hyxOSG.ParticleSystemDrawable(None).getParticleSystem() is None
    assert not hyxOSG.ParticleSystemDrawable(None).getBoundingBox().valid()


def test_the_allowed_mode_is_one_for_all_drawables(studio, system, any_mode_afterwards):
    assert DRAWABLE.getAllowedRenderMode() == DRAWABLE.TRIANGLES
    geode = osg.Geode()
    geode.addDrawable(hyxOSG.ParticleSystemDrawable(system, DRAWABLE.TRIANGLES, DRAWABLE.SIMPLE_SPRITES))
    studio.root.addChild(geode)
    meshes = studio.picture()
    DRAWABLE.setAllowedRenderMode(DRAWABLE.SPRITES)
    assert DRAWABLE.getAllowedRenderMode() == DRAWABLE.SPRITES
    assert studio.picture().difference(meshes) > 10  # the points' discs are rounder than the mesh
    DRAWABLE.setAllowedRenderMode(DRAWABLE.TRIANGLES)
    assert studio.picture().difference(meshes) == 0


def test_disabled_drawables_are_empty(studio, system):
    geode = osg.Geode()
    made = hyxOSG.ParticleSystemDrawable(system)
    geode.addDrawable(made)
    studio.root.addChild(geode)
    assert studio.picture().lit() > 200 and made.getEnable()
    made.setEnable(False)
    assert studio.picture().lit() == 0 and not made.getEnable()


def test_the_object_protocol_and_copies(system):
    made = hyxOSG.ParticleSystemDrawable(system, DRAWABLE.SPRITES, DRAWABLE.SIMPLE_SPRITES)
    assert (made.className(), made.libraryName()) == ("ParticleSystemDrawable", "hyxOSG")
    assert made.isSameKindAs(hyxOSG.ParticleSystemDrawable(None)) and not made.isSameKindAs(osg.Geometry())
    clone = made.clone(osg.CopyOp())
    assert clone.className() == "ParticleSystemDrawable" == made.cloneType().className()
    with pytest.raises(TypeError, match="not None"):
        made.clone(None)


def test_drawing_without_a_context_draws_nothing(system):
    made = hyxOSG.ParticleSystemDrawable(system)
    assert made.drawImplementation(osg.RenderInfo()) is None
    with pytest.raises(TypeError, match="ParticleSystemDrawable.drawImplementation.. argument 1 .* not None"):
        made.drawImplementation(None)


def test_a_texture_handle_holds_its_texture():
    texture = osg.Texture2D()
    before = texture.referenceCount()
    handle = hyxOSG.Texture2D(texture)
    assert handle.getTexture() == texture and texture.referenceCount() == before + 1
    assert hyxOSG.Texture2D(None).getTexture() is None
    with pytest.raises(TypeError):
        _hyxOSG.new_Texture2D(handle)
