"""Opens the library's BMP files in other programs and holds every pixel against what it must be.

Usage: open_bitmaps.py WRITE_BITMAPS. Takes Pillow and ImageMagick's convert-im6, as Debian has them: tools/setup installs
both. Prints what differs and ends with status 1.
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile

WIDTH, HEIGHT = 13, 5


def readers():
    """The programs by name: each a function from a file to its pixels."""
    try:
        from PIL import Image
    except ImportError:
        sys.exit(f"{sys.executable} has no Pillow: tools/setup installs python3-pil")
    convert = shutil.which("convert-im6")
    if not convert:
        sys.exit("there is no convert-im6: tools/setup installs imagemagick")

    def pillow(path):
        with Image.open(path) as picture:
            assert picture.size == (WIDTH, HEIGHT), f"{path.name}: its size is {picture.size}"
            return picture.convert("RGB").tobytes()

    def image_magick(path):
        return subprocess.run([convert, f"bmp:{path}", "-depth", "8", "rgb:-"], check=True, stdout=subprocess.PIPE).stdout

    return {"Pillow": pillow, "ImageMagick": image_magick}


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    faults = opened = 0
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([sys.argv[1], folder], check=True)
        for path in sorted(pathlib.Path(folder).glob("*.bmp")):
            expected = path.with_suffix(".rgb").read_bytes()
            assert len(expected) == WIDTH * HEIGHT * 3
            for name, read in readers().items():
                pixels = read(path)
                opened += 1
                # Of 5 bits 8 are made in more than one way, which differ by 1.
                nearest = 1 if path.name.startswith("16") else 0
                if len(pixels) != len(expected) or any(abs(a - b) > nearest for a, b in zip(pixels, expected)):
                    print(f"{name} shows {path.name} otherwise:\n{pixels.hex(' ')}\nnot\n{expected.hex(' ')}")
                    faults += 1
    assert opened == 20, f"{opened} files were opened, not 20"
    sys.exit(faults > 0)


if __name__ == "__main__":
    main()
