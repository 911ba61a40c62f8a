"""Makes, changes and removes texts at random in up to three applications, and draws them: random_texts.py SEED."""

import gc
import random
import sys
import warnings

import hyx
import hyxOSG
from off_screen import OffScreen

LETTERS = [
    *((0x20, 0x7E), (0x5D0, 0x5EA), (0x620, 0x64A), (0x900, 0x97F), (0xE00, 0xE5B), (0x4E00, 0x4E80), (0xAC00, 0xAC80)),
    *((0x1780, 0x17FF), (0x300, 0x36F), (0x2000, 0x206F), (0xFE00, 0xFE0F), (0x1F300, 0x1F5FF), (0xE000, 0xE010)),
    *((1, 0x20), (0xFFF0, 0xFFFF), (0x10FFF0, 0x10FFFF)),
]
FONTS = ["DejaVuSans", "DejaVuSerif", "/usr/share/fonts/truetype/noto/NotoSansKhmer-Regular.ttf", "none", "/etc/passwd"]


class Life:
    def __init__(self, seed):
        self.chance = random.Random(seed)
        self.stages = [self.open()]
        self.texts = []

    def open(self):
        chance = self.chance
        return OffScreen(chance.randint(1, 300), chance.randint(1, 300), chance.choice([0, 4]))

    @property
    def stage(self):
        return self.chance.choice(self.stages)

    @property
    def text(self):
        return self.chance.choice(self.texts)

    def word(self):
        ranges = (self.chance.choice(LETTERS) for _ in range(self.chance.choice([0, 1, 3, 10, 40, 400])))
        return "".join(chr(self.chance.randint(*ends)) + "\n" * (self.chance.random() < 0.1) for ends in ranges)

    def place(self):
        return hyx.Vec3(*(self.chance.uniform(-3, 5) for _ in range(3)))

    def size(self):
        return 10 ** self.chance.uniform(-3, 3)

    def add(self):
        self.texts.append(hyxOSG.Text(self.word(), self.place()))
        self.stage.root.addChild(self.texts[-1])

    def remove(self):
        text = self.texts.pop(self.chance.randrange(len(self.texts)))
        while text.getNumParents():
            text.getParent(0).removeChild(text)

    def open_or_close(self):
        if len(self.stages) < 3:
            self.stages.append(self.open())
        else:
            self.stages.pop().app.close()
            gc.collect()

    def write_row(self):
        self.stage.decorator.setFontSize(self.chance.uniform(1, 600))
        self.stage.decorator.setText(self.chance.randrange(4), self.word())

    def label(self):
        color = hyx.Vec4f(1, 1, 1, self.chance.random())
        self.stage.root.addChild(hyxOSG.createText(self.word(), hyx.Vec3(), color, self.size()))

    def step(self):
        if not self.texts:
            self.add()
        change = self.chance.choice(
            [
                self.add,
                self.remove,
                self.open_or_close,
                self.write_row,
                self.label,
                lambda: self.text.setText(self.word()),
                lambda: self.text.setCharacterSize(self.size()),
                lambda: self.text.setBackdropType(self.chance.randrange(10)),
                lambda: self.text.setAxisAlignment(self.chance.randrange(8)),
                lambda: self.text.setAlignment(self.chance.randrange(15)),
                lambda: self.text.setDrawMode(self.chance.randrange(16)),
                lambda: self.text.setFont(self.chance.choice(FONTS)),
                lambda: self.stage.look_from(self.place()),
            ]
        )
        change()
        self.stage.app.render()


if __name__ == "__main__":
    warnings.simplefilter("ignore")
    life = Life(int(sys.argv[1]))
    for _ in range(100):
        life.step()
    print("lived")
