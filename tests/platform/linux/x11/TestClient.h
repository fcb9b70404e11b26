#pragma once

#include "X11Composer.h"

#include <QRect>
#include <QRgb>

#include <xcb/shape.h>

#include <array>

namespace lucentra {

/// Windows of one program on the server.
class TestClient
{
public:
    TestClient()
        : m_connection(xcb_connect(nullptr, nullptr))
    {
        m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data;
    }

    xcb_window_t addWindow(const QRect &frame, QRgb colour, bool mapped = true)
    {
        return add(frame, {colour, 0, 1, m_screen->default_colormap}, m_screen->root_depth, m_screen->root_visual,
                   mapped);
    }

    /// A window of 32 bits a pixel: `colour` is premultiplied.
    xcb_window_t addTranslucentWindow(const QRect &frame, QRgb colour)
    {
        xcb_visualid_t visual = 0;
        for (auto depth = xcb_screen_allowed_depths_iterator(m_screen); depth.rem; xcb_depth_next(&depth)) {
            if (depth.data->depth == 32)
                visual = xcb_depth_visuals_iterator(depth.data).data->visual_id;
        }
        const xcb_colormap_t colours = xcb_generate_id(m_connection.get());
        xcb_create_colormap(m_connection.get(), XCB_COLORMAP_ALLOC_NONE, colours, m_screen->root, visual);
        return add(frame, {colour, 0, 1, colours}, 32, visual, true);
    }

    /// Gives the root window a colour, as a bare desktop has.
    void paintRoot(QRgb colour)
    {
        const quint32 pixel = colour;
        xcb_change_window_attributes(m_connection.get(), m_screen->root, XCB_CW_BACK_PIXEL, &pixel);
        xcb_clear_area(m_connection.get(), 0, m_screen->root, 0, 0, 0, 0);
        sync();
    }

    /// Leaves the name of a desktop's picture behind that is gone by now.
    void forgetDesktopPicture()
    {
        const xcb_atom_t property = x11Atom(m_connection.get(), "_XROOTPMAP_ID");
        const quint32 gone = xcb_generate_id(m_connection.get());
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_screen->root, property, XCB_ATOM_PIXMAP, 32, 1,
                            &gone);
        sync();
    }

    void putInto(xcb_window_t window, xcb_window_t outer)
    {
        xcb_reparent_window(m_connection.get(), window, outer, 2, 2);
        sync();
    }

    void shape(xcb_window_t window, const xcb_rectangle_t &kept)
    {
        xcb_shape_rectangles(m_connection.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, 0, window, 0, 0, 1, &kept);
        sync();
    }

    void destroy(xcb_window_t window)
    {
        xcb_destroy_window(m_connection.get(), window);
        sync();
    }

    void fill(xcb_window_t window, QRgb colour)
    {
        const xcb_gcontext_t context = xcb_generate_id(m_connection.get());
        const quint32 value = colour;
        xcb_create_gc(m_connection.get(), context, window, XCB_GC_FOREGROUND, &value);
        const xcb_rectangle_t whole{0, 0, 4096, 4096};
        xcb_poly_fill_rectangle(m_connection.get(), window, context, 1, &whole);
        xcb_free_gc(m_connection.get(), context);
        sync();
    }

    X11ResourceRange range() const
    {
        const xcb_setup_t *setup = xcb_get_setup(m_connection.get());
        return {setup->resource_id_base, setup->resource_id_mask};
    }

    void sync()
    {
        std::free(xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
    }

private:
    xcb_window_t add(const QRect &frame, const std::array<quint32, 4> &values, quint8 depth, xcb_visualid_t visual,
                     bool mapped)
    {
        const xcb_window_t window = xcb_generate_id(m_connection.get());
        xcb_create_window(m_connection.get(), depth, window, m_screen->root, qint16(frame.x()), qint16(frame.y()),
                          quint16(frame.width()), quint16(frame.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                          XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP,
                          values.data());
        if (mapped)
            xcb_map_window(m_connection.get(), window);
        sync();
        return window;
    }

    X11Connection m_connection;
    xcb_screen_t *m_screen;
};

} // namespace lucentra
