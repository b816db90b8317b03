"""Shows Velum's values in gdb as their users write them: a text as a text, a point as (x, y), a matrix as its rows."""

import gdb
import gdb.printing


def bases(value):
    """The parts that a value is made of by inheritance, outermost first."""
    yield value
    for field in value.type.fields():
        if field.is_base_class:
            yield from bases(value[field])


def number(value):
    return format(float(value), ".17g") if value.type.strip_typedefs().code == gdb.TYPE_CODE_FLT else str(int(value))


def numbers(values):
    return "(" + ", ".join(number(value) for value in values) + ")"


def member(value, name):
    """A data member of that name, wherever in the bases it stands."""
    for part in bases(value):
        if any(field.name == name and not field.is_base_class for field in part.type.fields()):
            return part[name]
    raise gdb.error("no member " + name)


class TextPrinter:
    """GString."""

    def __init__(self, value):
        self.text = value["text_"]

    def to_string(self):
        return gdb.default_visualizer(self.text).to_string()

    def display_hint(self):
        return "string"


def printer_of(names, show):
    """A printer that shows a value of some members by a function of them."""

    class Printer:
        def __init__(self, value):
            self.value = value

        def to_string(self):
            return show(*[member(self.value, name) for name in names])

    return Printer


def members(*names):
    return printer_of(names, lambda *values: numbers(values))


def rows(elements, height, width):
    return "{" + ", ".join(numbers(elements[row * width + k] for k in range(width)) for row in range(height)) + "}"


def box(lower, upper):
    def corner(vec):
        return numbers(member(vec, name) for name in "xyz" if has_member(vec, name))

    return "[" + corner(lower) + " .. " + corner(upper) + "]"


def has_member(value, name):
    try:
        member(value, name)
    except gdb.error:
        return False
    return True


class VectorPrinter:
    """RVector: its length, and its elements as children."""

    def __init__(self, value):
        self.count = int(member(value, "length_"))
        self.data = pointer(member(value, "elements_"))

    def to_string(self):
        return "RVector of %d" % self.count

    def children(self):
        return ((str(k), self.data[k]) for k in range(self.count))

    def display_hint(self):
        return "array"


class MatrixPrinter:
    """RMatrix: its shape, and its rows as children."""

    def __init__(self, value):
        self.rows = int(member(value, "rows_"))
        self.columns = int(member(value, "cols_"))
        self.data = pointer(member(value, "elements_"))

    def to_string(self):
        return "RMatrix of %d x %d" % (self.rows, self.columns)

    def children(self):
        for row in range(self.rows):
            yield str(row), numbers(self.data[row * self.columns + k] for k in range(self.columns))

    def display_hint(self):
        return "array"


def pointer(unique):
    """What a std::unique_ptr of libstdc++ or libc++ points to."""
    element = unique.type.strip_typedefs().template_argument(0)
    element = element.target() if element.code == gdb.TYPE_CODE_ARRAY else element
    return unique.address.cast(element.pointer().pointer()).dereference()


def collection():
    printers = gdb.printing.RegexpCollectionPrettyPrinter("velum")
    table = [
        ("GString", "GString", TextPrinter),
        ("Vec2", "(BasicVec2|Point2)<.*>", members("x", "y")),
        ("Vec3", "(BasicVec3|Point3)<.*>", members("x", "y", "z")),
        ("Vec4", "(BasicVec4|Point4)<.*>", members("x", "y", "z", "w")),
        ("Quat4", "BasicQuat4<.*>|Quat4[df]", members("x", "y", "z", "w")),
        ("Box", "BasicBox[23]<.*>", printer_of(("min_", "max_"), box)),
        ("Mat3d", "Mat3d", printer_of(("m_",), lambda m: rows(m, 3, 3))),
        ("Mat4", "Mat4[df]", printer_of(("m_",), lambda m: rows(m, 4, 4))),
        ("Color4b", "Color4b", members("R", "G", "B", "A")),
        ("Color4f", "Color4f", members("R", "G", "B", "A")),
        ("Color3f", "Color3f", members("R", "G", "B")),
        ("doubledouble", "doubledouble", printer_of(("hi", "lo"), lambda hi, lo: number(hi) + " + " + number(lo))),
        ("RVector", "RVector", VectorPrinter),
        ("RMatrix", "RMatrix", MatrixPrinter),
    ]
    for name, pattern, printer in table:
        printers.add_printer(name, "^vlm::(" + pattern + ")$", printer)
    return printers


gdb.printing.register_pretty_printer(gdb.current_objfile(), collection(), replace=True)
