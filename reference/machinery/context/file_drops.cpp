// Answers the messages of the program that a file is dragged from.
#include "reference/machinery/context/file_drops.h"

#include "reference/machinery/context/owner_process.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <sstream>
#include <utility>

namespace hyxOSG {
namespace {

constexpr long version = 5;
constexpr long longestList = 1 << 20; // words

/// The program at the other end may end at any time; that must not end this one.
class ForgivingErrors {
public:
    explicit ForgivingErrors(Display* display) : m_display(display) {}

    ~ForgivingErrors() {
        XSync(m_display, False);
        XSetErrorHandler(m_former);
    }

private:
    static int ignore(Display*, XErrorEvent*) { return 0; }

    Display* m_display;
    XErrorHandler m_former = XSetErrorHandler(ignore);
};

/// Of `%20` and the like.
std::string decoded(std::string const& text) {
    std::string plain;
    for (size_t i = 0; i < text.size(); ++i) {
        unsigned char byte = 0;
        char const* digits = text.data() + i + 1;
        bool const coded =
            text[i] == '%' && i + 2 < text.size() && std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
        plain += coded ? char(byte) : text[i];
        i += coded ? 2 : 0;
    }
    return plain;
}

} // namespace

std::vector<std::string> filesOfUriList(std::string const& list) {
    constexpr char scheme[] = "file://";
    std::vector<std::string> files;
    std::istringstream lines(list);
    for (std::string line; std::getline(lines, line);) {
        line.erase(std::find_if(line.begin(), line.end(), [](char c) { return c == '\r' || c == '\0'; }), line.end());
        size_t const path = line.starts_with(scheme) ? line.find('/', sizeof scheme - 1) : std::string::npos;
        if (path != std::string::npos)
            files.push_back(decoded(line.substr(path)));
    }
    return files;
}

struct FileDrops::Implementation {
    enum Name {
        AWARE,
        PROXY,
        ENTER,
        POSITION,
        STATUS,
        DROP,
        FINISHED,
        SELECTION,
        COPY,
        TYPE_LIST,
        URI_LIST,
        NUM_NAMES
    };

    explicit Implementation(Display* display, Window target);
    ~Implementation();

    void enter(XClientMessageEvent const& message);
    void answerPosition() const;
    void askForFiles(Time time);
    void receive(XSelectionEvent const& event);
    std::vector<Atom> readAtoms(Window owner, Atom property) const;
    void tell(Atom message, std::array<long, 5> const& data) const;

    Display* display;
    Window target; ///< that of the user
    Window own;
    std::array<Atom, NUM_NAMES> atoms{};
    Window source = None; ///< that the files come from
    bool offersFiles = false;
    OwnerProcess process;
    std::vector<std::string> files;
};

FileDrops::Implementation::Implementation(Display* display, Window target) : display(display), target(target) {
    ForgivingErrors const errors(display);
    own = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1, 1, 0, 0, 0);
    char const* names[NUM_NAMES] = {"XdndAware",      "XdndProxy",    "XdndEnter",    "XdndPosition",
                                    "XdndStatus",     "XdndDrop",     "XdndFinished", "XdndSelection",
                                    "XdndActionCopy", "XdndTypeList", "text/uri-list"};
    XInternAtoms(display, const_cast<char**>(names), NUM_NAMES, False, atoms.data());
    for (Window const window : {target, own}) {
        auto const set = [&](Name name, Atom type, long value) {
            XChangeProperty(display, window, atoms[name], type, 32, PropModeReplace,
                            reinterpret_cast<unsigned char const*>(&value), 1);
        };
        set(AWARE, XA_ATOM, version);
        set(PROXY, XA_WINDOW, long(own));
    }
}

FileDrops::Implementation::~Implementation() {
    if (!process.isOther())
        XCloseDisplay(display); // with the hidden window
}

/// The offered types are in the message, or where they are more than three, with the source.
void FileDrops::Implementation::enter(XClientMessageEvent const& message) {
    source = Window(message.data.l[0]);
    std::vector<Atom> types;
    if (message.data.l[1] & 1)
        types = readAtoms(source, atoms[TYPE_LIST]);
    else
        types.assign(message.data.l + 2, message.data.l + 5);
    offersFiles = std::ranges::find(types, atoms[URI_LIST]) != types.end();
}

std::vector<Atom> FileDrops::Implementation::readAtoms(Window owner, Atom property) const {
    Atom type = None;
    int format = 0;
    unsigned long count = 0, left = 0;
    unsigned char* data = nullptr;
    std::vector<Atom> read;
    if (XGetWindowProperty(display, owner, property, 0, longestList, False, XA_ATOM, &type, &format, &count, &left,
                           &data) == Success &&
        data && format == 32)
        read.assign(reinterpret_cast<Atom*>(data), reinterpret_cast<Atom*>(data) + count);
    if (data)
        XFree(data);
    return read;
}

void FileDrops::Implementation::tell(Atom message, std::array<long, 5> const& data) const {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.display = display;
    event.xclient.window = source;
    event.xclient.message_type = message;
    event.xclient.format = 32;
    std::ranges::copy(data, event.xclient.data.l);
    XSendEvent(display, source, False, NoEventMask, &event);
}

void FileDrops::Implementation::answerPosition() const {
    constexpr long accepted = 1, tellMoves = 2;
    tell(atoms[STATUS],
         {long(target), offersFiles ? accepted | tellMoves : 0, 0, 0, offersFiles ? long(atoms[COPY]) : long(None)});
}

void FileDrops::Implementation::askForFiles(Time time) {
    if (offersFiles)
        XConvertSelection(display, atoms[SELECTION], atoms[URI_LIST], atoms[SELECTION], own, time);
    else
        tell(atoms[FINISHED], {long(target), 0, None, 0, 0});
}

void FileDrops::Implementation::receive(XSelectionEvent const& event) {
    Atom type = None;
    int format = 0;
    unsigned long count = 0, left = 0;
    unsigned char* data = nullptr;
    if (event.property != None)
        XGetWindowProperty(display, own, event.property, 0, longestList, True, AnyPropertyType, &type, &format, &count,
                           &left, &data);
    bool const received = data && format == 8;
    if (received)
        for (std::string& file : filesOfUriList({reinterpret_cast<char*>(data), count}))
            files.push_back(std::move(file));
    if (data)
        XFree(data);
    tell(atoms[FINISHED], {long(target), received, received ? long(atoms[COPY]) : long(None), 0, 0});
    source = None;
}

FileDrops::FileDrops(unsigned long window) {
    if (Display* display = XOpenDisplay(nullptr))
        m_implementation = std::make_unique<Implementation>(display, window);
}

FileDrops::~FileDrops() = default;

std::vector<std::string> FileDrops::take() {
    if (!m_implementation || XPending(m_implementation->display) == 0)
        return {};
    Implementation& self = *m_implementation;
    ForgivingErrors const errors(self.display);
    while (XPending(self.display) > 0) {
        XEvent event;
        XNextEvent(self.display, &event);
        Atom const message = event.type == ClientMessage ? event.xclient.message_type : None;
        if (event.type == SelectionNotify)
            self.receive(event.xselection);
        else if (message == None)
            continue;
        else if (message == self.atoms[Implementation::ENTER])
            self.enter(event.xclient);
        else if (message == self.atoms[Implementation::POSITION])
            self.answerPosition();
        else if (message == self.atoms[Implementation::DROP])
            self.askForFiles(Time(event.xclient.data.l[2]));
    }
    return std::exchange(self.files, {});
}

} // namespace hyxOSG
