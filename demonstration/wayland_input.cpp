// A pointer and a keyboard for the Wayland sessions of the tests: wayland_input WIDTH HEIGHT, of all outputs together in
// logical pixels. Reads commands from the standard input, one per line, and answers each when the compositor has it:
//   move X Y | travel X Y | press [BUTTON] | release [BUTTON] | key CODE... (held down together) | wait MILLISECONDS
// Buttons and keys have the kernel's numbers.
#include <fake-input-client.h>
#include <virtual-keyboard-unstable-v1-client.h>
#include <wlr-virtual-pointer-unstable-v1-client.h>
#include <xkbcommon/xkbcommon.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

namespace {

constexpr std::uint32_t leftButton = 0x110;

struct Devices
{
    wl_display *display = nullptr;
    wl_seat *seat = nullptr;
    zwlr_virtual_pointer_manager_v1 *pointers = nullptr;
    zwp_virtual_keyboard_manager_v1 *keyboards = nullptr;
    org_kde_kwin_fake_input *fake = nullptr; ///< KWin's, instead of the others
    zwlr_virtual_pointer_v1 *pointer = nullptr;
    zwp_virtual_keyboard_v1 *keyboard = nullptr;
    xkb_state *state = nullptr;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

std::uint32_t now()
{
    using namespace std::chrono;
    return std::uint32_t(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

void bindGlobal(void *data, wl_registry *registry, std::uint32_t number, const char *interface, std::uint32_t version)
{
    auto &devices = *static_cast<Devices *>(data);
    const auto bind = [&](auto *&global, const wl_interface &wanted, std::uint32_t least) {
        if (std::string_view(interface) == wanted.name && version >= least)
            global = static_cast<std::remove_reference_t<decltype(global)>>(
                wl_registry_bind(registry, number, &wanted, least));
    };
    bind(devices.seat, wl_seat_interface, 1);
    bind(devices.pointers, zwlr_virtual_pointer_manager_v1_interface, 1);
    bind(devices.keyboards, zwp_virtual_keyboard_manager_v1_interface, 1);
    bind(devices.fake, org_kde_kwin_fake_input_interface, 4);
}

/// A keyboard of the plain American layout.
void addKeyboard(Devices &devices)
{
    devices.keyboard = zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(devices.keyboards, devices.seat);
    xkb_keymap *keymap = xkb_keymap_new_from_names(xkb_context_new(XKB_CONTEXT_NO_FLAGS), nullptr,
                                                   XKB_KEYMAP_COMPILE_NO_FLAGS);
    devices.state = xkb_state_new(keymap);
    const std::string text = xkb_keymap_get_as_string(keymap, XKB_KEYMAP_FORMAT_TEXT_V1);
    const int file = memfd_create("keymap", MFD_CLOEXEC);
    if (write(file, text.c_str(), text.size() + 1) < 0)
        std::perror("keymap");
    zwp_virtual_keyboard_v1_keymap(devices.keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file,
                                   std::uint32_t(text.size() + 1));
    close(file);
}

void move(const Devices &devices, double x, double y)
{
    if (devices.fake) {
        org_kde_kwin_fake_input_pointer_motion_absolute(devices.fake, wl_fixed_from_double(x), wl_fixed_from_double(y));
        return;
    }
    zwlr_virtual_pointer_v1_motion_absolute(devices.pointer, now(), std::uint32_t(x), std::uint32_t(y), devices.width,
                                            devices.height);
    zwlr_virtual_pointer_v1_frame(devices.pointer);
}

void travel(const Devices &devices, double x, double y)
{
    if (devices.fake) {
        org_kde_kwin_fake_input_pointer_motion(devices.fake, wl_fixed_from_double(x), wl_fixed_from_double(y));
        return;
    }
    zwlr_virtual_pointer_v1_motion(devices.pointer, now(), wl_fixed_from_double(x), wl_fixed_from_double(y));
    zwlr_virtual_pointer_v1_frame(devices.pointer);
}

void button(const Devices &devices, std::uint32_t number, bool isDown)
{
    if (devices.fake) {
        org_kde_kwin_fake_input_button(devices.fake, number, isDown);
        return;
    }
    zwlr_virtual_pointer_v1_button(devices.pointer, now(), number, isDown);
    zwlr_virtual_pointer_v1_frame(devices.pointer);
}

void key(const Devices &devices, std::uint32_t code, bool isDown)
{
    if (devices.fake) {
        org_kde_kwin_fake_input_keyboard_key(devices.fake, code, isDown);
    } else {
        zwp_virtual_keyboard_v1_key(devices.keyboard, now(), code, isDown);
        xkb_state_update_key(devices.state, code + 8, isDown ? XKB_KEY_DOWN : XKB_KEY_UP);
        zwp_virtual_keyboard_v1_modifiers(devices.keyboard,
                                          xkb_state_serialize_mods(devices.state, XKB_STATE_MODS_DEPRESSED), 0, 0, 0);
    }
    wl_display_roundtrip(devices.display);
}

void perform(const Devices &devices, std::istringstream line)
{
    std::string word;
    line >> word;
    double x = 0;
    double y = 0;
    if (word == "move" && line >> x >> y) {
        move(devices, x, y);
    } else if (word == "travel" && line >> x >> y) {
        travel(devices, x, y);
    } else if (word == "press" || word == "release") {
        std::uint32_t number = 0;
        button(devices, line >> number ? number : leftButton, word == "press");
    } else if (word == "key") {
        std::vector<std::uint32_t> codes;
        for (std::uint32_t code = 0; line >> code;)
            codes.push_back(code);
        for (auto code = codes.begin(); code != codes.end(); ++code)
            key(devices, *code, true);
        for (auto code = codes.rbegin(); code != codes.rend(); ++code)
            key(devices, *code, false);
    } else if (word == "wait" && line >> x) {
        std::this_thread::sleep_for(std::chrono::milliseconds(int(x)));
    }
    wl_display_roundtrip(devices.display);
}

} // namespace

int main(int argc, char *argv[])
{
    Devices devices{.display = wl_display_connect(nullptr)};
    if (!devices.display || argc < 3)
        return EXIT_FAILURE;
    devices.width = std::uint32_t(std::atoi(argv[1]));
    devices.height = std::uint32_t(std::atoi(argv[2]));
    const wl_registry_listener listener{.global = &bindGlobal, .global_remove = [](void *, wl_registry *, std::uint32_t) {}};
    wl_registry_add_listener(wl_display_get_registry(devices.display), &listener, &devices);
    wl_display_roundtrip(devices.display);
    if (devices.fake) {
        org_kde_kwin_fake_input_authenticate(devices.fake, "lucentra", "tests");
    } else if (devices.pointers && devices.keyboards) {
        devices.pointer = zwlr_virtual_pointer_manager_v1_create_virtual_pointer(devices.pointers, devices.seat);
        addKeyboard(devices);
    } else {
        return EXIT_FAILURE;
    }
    wl_display_roundtrip(devices.display);
    for (std::string line; std::getline(std::cin, line);) {
        perform(devices, std::istringstream(line));
        std::cout << "done" << std::endl;
    }
}
