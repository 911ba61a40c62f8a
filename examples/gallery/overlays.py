"""What is drawn over the scene: logo, text rows, cursor and nodes of the head-up display."""

import hyx
import hyxOSG

from gallery.stage import HEIGHT, WIDTH, Decorator, checks

TEAL = (0.1, 0.5, 0.5)


def logo(location, alpha=1.0):
    def make(stage):
        stage.ball()
        stage.decorator.setLogoFile(
            stage.image("logo", lambda x, y: (0.95, 0.8, 0.2) if 6 < y < 14 else TEAL, 48, 20), alpha
        )
        stage.decorator.setLogoPosition(
            0.3 if location == Decorator.FREE else 0.05, 0.4 if location == Decorator.FREE else 0.05
        )
        stage.decorator.setLogoLocation(location)

    return make


def logo_texture(stage):
    """From a texture, in a size of its own."""
    stage.ball()
    stage.decorator.setLogo(hyxOSG.createTexture(stage.image("logo", checks)))
    stage.decorator.setMaximumLogoDimension(32, 32)
    stage.decorator.setLogoLocation(Decorator.UPPER_RIGHT)


def rows(change=lambda decorator: None):
    def make(stage):
        for row, text, color in (
            (0, "first row", (0, 0, 0.5)),
            (1, "second row", (0.6, 0, 0)),
            (3, "fourth row", (0, 0.4, 0)),
        ):
            stage.decorator.setText(row, text, hyx.Vec4f(*color, 1))
        change(stage.decorator)

    return make


def cursor(stage):
    stage.ball()
    stage.decorator.setEnableRenderedCursor(True)
    stage.decorator.updateCursorPosition(WIDTH / 2, HEIGHT / 2)


def on_the_display(stage):
    stage.ball()
    text = hyxOSG.Text("on the HUD", hyx.Vec3(10, 10, 0), hyx.Vec4(0.5, 0, 0.5, 1))
    text.setAxisAlignment(hyxOSG.Text.XY_PLANE)
    text.setCharacterSize(20)
    stage.decorator.getHud().addChild(text)


TILES = {
    "logo, upper left": logo(Decorator.UPPER_LEFT),
    "logo, lower left": logo(Decorator.LOWER_LEFT),
    "logo, upper right": logo(Decorator.UPPER_RIGHT),
    "logo, lower right": logo(Decorator.LOWER_RIGHT),
    "logo, free": logo(Decorator.FREE),
    "logo, half transparent": logo(Decorator.FREE, 0.5),
    "logo of a texture": logo_texture,
    "text rows": rows(),
    "font": rows(lambda decorator: decorator.setFontName("DejaVuSerif")),
    "font size": rows(lambda decorator: decorator.setFontSize(20)),
    "pixel scale": rows(lambda decorator: decorator.setScreenPixelScale(0.7)),
    "cursor": cursor,
    "HUD": on_the_display,
}
