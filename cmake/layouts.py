"""A back end of omniidl: how the parameters of every operation lie on the wire.

Writes the tables of agent/orb/layouts.h. Run as

    omniidl -p<this folder> -blayouts -Wb<file to write> <IDL file>

What the tables cannot express is an error: it must be taught here first, and to
the reader of the tables.
"""

from omniidl import idlast, idltype, idlvisitor, idlutil

SIZES = {
    idltype.tk_short: 2, idltype.tk_ushort: 2, idltype.tk_long: 4, idltype.tk_ulong: 4,
    idltype.tk_float: 4, idltype.tk_double: 8, idltype.tk_boolean: 1, idltype.tk_char: 1,
    idltype.tk_octet: 1, idltype.tk_longlong: 8, idltype.tk_ulonglong: 8,
}
# Least sizes: a string is at least its length and a NUL, an Any a TypeCode, a
# reference a type id and the number of its profiles.
STRING_LEAST = 5
ANY_LEAST = 4
REFERENCE_LEAST = 9
ENUM_SIZE = 4
LENGTH_SIZE = 4

# Operations that every object has and the ORB decodes, with their parameters.
IMPLICIT = {
    "_is_a": [idltype.String(0)], "_non_existent": [], "_interface": [], "_implementation": [],
}

MOST_NESTED = 12
MOST_SCALARS = 16


class Unsupported(Exception):
    pass


class Layout:
    """One type; equal ones are the same object."""

    def __init__(self, kind, least, most=0, id="", name="", parts=()):
        self.kind = kind
        self.least = least
        self.most = most
        self.id = id
        self.name = name
        self.parts = parts  # pairs of name and layout, the layout None for a label
        inner = [layout for _, layout in parts if layout is not None]
        self.depth = 1 + max([layout.depth for layout in inner], default=0)
        self.plain = kind != idltype.tk_objref and all(layout.plain for layout in inner)
        self.scalar = kind in SIZES or kind == idltype.tk_enum or (
            kind == idltype.tk_alias and inner[0].scalar)
        if self.depth > MOST_NESTED:
            raise Unsupported(name + " is nested too deep")

    def key(self):
        return (self.kind, self.most, self.id, self.name,
                tuple((name, id_of(layout)) for name, layout in self.parts))

    def shape(self):
        """What lies on the wire, whatever it is called."""
        if self.kind == idltype.tk_alias:
            return self.parts[0][1].shape()
        if self.kind == idltype.tk_enum:
            return (self.kind, len(self.parts))
        return (self.kind, self.most, tuple(layout.shape() for _, layout in self.parts))


def id_of(layout):
    return layout.number if layout is not None else None


class Layouts:
    def __init__(self):
        self.known = {}
        self.ordered = []

    def intern(self, layout):
        known = self.known.setdefault(layout.key(), layout)
        if known is layout:
            layout.number = len(self.ordered)
            self.ordered.append(layout)
        return known

    def of(self, type):
        kind = type.kind()
        if kind in SIZES:
            return self.intern(Layout(kind, SIZES[kind]))
        if kind == idltype.tk_string:
            return self.intern(Layout(kind, STRING_LEAST, type.bound()))
        if kind == idltype.tk_any:
            return self.intern(Layout(kind, ANY_LEAST))
        if kind == idltype.tk_objref:
            return self.intern(Layout(kind, REFERENCE_LEAST))
        if kind == idltype.tk_sequence:
            element = self.of(type.seqType())
            return self.intern(Layout(kind, LENGTH_SIZE, type.bound(), parts=(("", element),)))
        if kind in (idltype.tk_struct, idltype.tk_enum, idltype.tk_alias):
            return self.declared(type.decl(), kind)
        raise Unsupported("kind " + str(idltype.kind_map.get(kind, kind)))

    def declared(self, decl, kind):
        if kind == idltype.tk_enum:
            parts = tuple((label.identifier(), None) for label in decl.enumerators())
            least = ENUM_SIZE
        elif kind == idltype.tk_struct:
            if decl.recursive():
                raise Unsupported(decl.identifier() + " contains itself")
            parts = tuple((declarator.identifier(), self.member(member.memberType(), declarator))
                          for member in decl.members() for declarator in member.declarators())
            least = sum(layout.least for _, layout in parts)
        else:
            parts = (("", self.member(decl.alias().aliasType(), decl)),)
            least = parts[0][1].least
        return self.intern(Layout(kind, least, id=decl.repoId(), name=decl.identifier(),
                                  parts=parts))

    def member(self, type, declarator):
        if declarator.sizes():
            raise Unsupported(declarator.identifier() + " is an array")
        return self.of(type)


class Reader(idlvisitor.AstVisitor):
    def __init__(self):
        self.layouts = Layouts()
        self.operations = {}  # name: lists of layouts
        self.types = {}  # repository id: layout
        for name, types in IMPLICIT.items():
            self.add(name, types)

    def visitAST(self, node):
        for declaration in node.declarations():
            declaration.accept(self)

    def visitModule(self, node):
        for definition in node.definitions():
            definition.accept(self)

    def visitInterface(self, node):
        for declaration in node.declarations():
            declaration.accept(self)
        for callable in [] if node.local() else node.callables():
            if isinstance(callable, idlast.Operation):
                if callable.contexts():
                    raise SystemExit(callable.identifier() + ": a context is not supported")
                self.add(callable.identifier(),
                         [p.paramType() for p in callable.parameters() if p.is_in()])
            else:
                for name in callable.identifiers():
                    self.add("_get_" + name, [])
                    if not callable.readonly():
                        self.add("_set_" + name, [callable.attrType()])

    def visitStruct(self, node):
        self.addType(node, idltype.tk_struct)

    def visitEnum(self, node):
        self.addType(node, idltype.tk_enum)

    def visitTypedef(self, node):
        for declarator in node.declarators():
            self.addType(declarator, idltype.tk_alias)

    # A type that cannot be told is no error: no Any may hold it, that is all.
    def addType(self, declaration, kind):
        try:
            layout = self.layouts.declared(declaration, kind)
        except Unsupported:
            return
        if layout.plain:
            self.types[layout.id] = layout

    def add(self, name, types):
        try:
            parameters = [self.layouts.of(type) for type in types]
        except Unsupported as reason:
            raise SystemExit("operation " + name + ": " + str(reason))
        forms = self.operations.setdefault(name, {})
        forms.setdefault(tuple(layout.shape() for layout in parameters), parameters)

    def check(self):
        """An operation's name does not tell its interface. Bytes that fit one of
        several forms may reach the decoder of another, which is harmless in one
        case: all forms but one consist of a few scalars. Their decoders read any
        bytes; and what fits them is too short to hurt the decoder of the last.
        """
        for name, forms in self.operations.items():
            long_ones = [parameters for parameters in forms.values()
                         if not all(layout.scalar for layout in parameters)
                         or sum(layout.least for layout in parameters) > MOST_SCALARS]
            if len(forms) > 1 and len(long_ones) > 1:
                raise SystemExit("operation " + name + " has several forms that are no scalars")


def quoted(text):
    return '"' + text + '"'


def write(reader, out):
    for layout in reader.layouts.ordered:
        parts = "nullptr"
        if layout.parts:
            parts = "PARTS_%d" % layout.number
            out.write("constexpr Part %s[] = {%s};\n" % (parts, ", ".join(
                "{%s, %s}" % (quoted(name), "nullptr" if inner is None
                              else "&LAYOUT_%d" % inner.number)
                for name, inner in layout.parts)))
        out.write("constexpr Layout LAYOUT_%d = {Kind{%d}, %d, %d, %s, %s, %s, %d};\n" %
                  (layout.number, layout.kind, layout.least, layout.most, quoted(layout.id),
                   quoted(layout.name), parts, len(layout.parts)))
    rows = []
    for name in sorted(reader.operations):
        for form, parameters in enumerate(reader.operations[name].values()):
            table = "nullptr"
            if parameters:
                table = "PARAMETERS_%d" % len(rows)
                out.write("constexpr const Layout* %s[] = {%s};\n" % (table, ", ".join(
                    "&LAYOUT_%d" % layout.number for layout in parameters)))
            rows.append("    {%s, %s, %d},\n" % (quoted(name), table, len(parameters)))
    out.write("constexpr OperationLayout OPERATIONS[] = {\n" + "".join(rows) + "};\n")
    out.write("constexpr const Layout* TYPES[] = {\n" + "".join(
        "    &LAYOUT_%d,  // %s\n" % (reader.types[id].number, id)
        for id in sorted(reader.types)) + "};\n")


def run(tree, args):
    reader = Reader()
    tree.accept(reader)
    reader.check()
    with open(args[0], "w") as out:
        write(reader, out)
