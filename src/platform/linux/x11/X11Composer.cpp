#include "X11Composer.h"

#include <QRegion>

#include <xcb/composite.h>
#include <xcb/shape.h>
#include <xcb/xfixes.h>

#include <sys/ipc.h>
#include <sys/shm.h>

#include <algorithm>
#include <cstring>
#include <thread>
#include <vector>

namespace lucentra {

namespace {

/// Window managers that wrap a client nest it at most this deep below the root.
constexpr int maximumNesting = 8;

std::vector<xcb_window_t> propertyWindows(xcb_get_property_reply_t *reply)
{
    if (!reply || reply->format != 32)
        return {};
    const auto *values = static_cast<const xcb_window_t *>(xcb_get_property_value(reply));
    return {values, values + reply->value_len};
}

} // namespace

/// A foreign window that lies, at least in part, in the area.
struct X11Composer::TopLevel
{
    xcb_window_t window;
    xcb_visualid_t visual;
    QPoint origin; ///< outer corner, with the border, in the root window
    QSize size;    ///< with the border
    int border;
    bool isShaped;
    quint16 opacity; ///< 0xffff is opaque
};

/// A piece of memory that the server writes images into.
struct X11Composer::SharedImage
{
    SharedImage(xcb_connection_t *connection, size_t byteCount)
        : size(byteCount)
    {
        const int id = shmget(IPC_PRIVATE, byteCount, IPC_CREAT | 0600);
        if (id < 0)
            return;
        void *address = shmat(id, nullptr, 0);
        if (address != reinterpret_cast<void *>(-1)) {
            segment = xcb_generate_id(connection);
            const auto attached = xcb_shm_attach_checked(connection, segment, quint32(id), false);
            X11Reply<xcb_generic_error_t> error(xcb_request_check(connection, attached));
            if (error)
                shmdt(address);
            else
                data = static_cast<uchar *>(address);
        }
        shmctl(id, IPC_RMID, nullptr); // goes when the last side detaches, also after a crash
    }
    ~SharedImage()
    {
        if (data)
            shmdt(data);
    }
    SharedImage(const SharedImage &) = delete;
    SharedImage &operator=(const SharedImage &) = delete;

    size_t size;
    xcb_shm_seg_t segment = 0;
    uchar *data = nullptr; ///< null where the server can't reach our memory
};

X11Composer::X11Composer(X11ResourceRange ours)
    : m_ours(ours)
{
    int screenNumber = 0;
    m_connection.reset(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(m_connection.get()))
        return;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get()));
    while (screenNumber-- > 0)
        xcb_screen_next(&screens);
    m_screen = screens.data;
    m_usable = prepareExtensions();
}

X11Composer::~X11Composer() = default;

bool X11Composer::prepareExtensions()
{
    xcb_connection_t *c = m_connection.get();
    for (xcb_extension_t *extension : {&xcb_composite_id, &xcb_render_id, &xcb_xfixes_id, &xcb_shape_id, &xcb_shm_id})
        xcb_prefetch_extension_data(c, extension);
    for (xcb_extension_t *extension : {&xcb_composite_id, &xcb_render_id, &xcb_xfixes_id, &xcb_shape_id}) {
        const xcb_query_extension_reply_t *reply = xcb_get_extension_data(c, extension);
        if (!reply || !reply->present)
            return false;
    }
    const auto composite = xcb_composite_query_version(c, 0, 4);
    const auto fixes = xcb_xfixes_query_version(c, 4, 0);
    const auto formats = xcb_render_query_pict_formats(c);
    X11Reply<xcb_composite_query_version_reply_t> compositeReply(
        xcb_composite_query_version_reply(c, composite, nullptr));
    X11Reply<xcb_xfixes_query_version_reply_t> fixesReply(xcb_xfixes_query_version_reply(c, fixes, nullptr));
    X11Reply<xcb_render_query_pict_formats_reply_t> formatsReply(
        xcb_render_query_pict_formats_reply(c, formats, nullptr));
    if (!compositeReply || !fixesReply || !formatsReply)
        return false;

    for (auto format = xcb_render_query_pict_formats_formats_iterator(formatsReply.get()); format.rem;
         xcb_render_pictforminfo_next(&format)) {
        const xcb_render_directformat_t &direct = format.data->direct;
        if (format.data->depth == 32 && format.data->type == XCB_RENDER_PICT_TYPE_DIRECT && direct.alpha_mask == 0xff &&
            direct.alpha_shift == 24 && direct.red_shift == 16 && direct.green_shift == 8 && direct.blue_shift == 0)
            m_argbFormat = format.data->id;
    }
    for (auto screen = xcb_render_query_pict_formats_screens_iterator(formatsReply.get()); screen.rem;
         xcb_render_pictscreen_next(&screen)) {
        for (auto depth = xcb_render_pictscreen_depths_iterator(screen.data); depth.rem;
             xcb_render_pictdepth_next(&depth)) {
            for (auto visual = xcb_render_pictdepth_visuals_iterator(depth.data); visual.rem;
                 xcb_render_pictvisual_next(&visual))
                m_formats[visual.data->visual] = visual.data->format;
        }
    }
    m_clientList = atom("_NET_CLIENT_LIST");
    m_rootPixmap = atom("_XROOTPMAP_ID");
    m_opacity = atom("_NET_WM_WINDOW_OPACITY");
    return m_argbFormat != 0;
}

xcb_atom_t X11Composer::atom(const char *name)
{
    const auto cookie = xcb_intern_atom(m_connection.get(), false, quint16(std::strlen(name)), name);
    X11Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection.get(), cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

void X11Composer::setRedirecting(bool redirecting)
{
    if (!m_usable || redirecting == m_redirecting)
        return;
    m_redirecting = redirecting;
    if (redirecting) {
        xcb_composite_redirect_subwindows(m_connection.get(), m_screen->root, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
        m_redirectedAt = std::chrono::steady_clock::now();
    } else {
        xcb_composite_unredirect_subwindows(m_connection.get(), m_screen->root, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    }
    xcb_flush(m_connection.get());
}

QList<xcb_window_t> X11Composer::rootChildren()
{
    const auto cookie = xcb_query_tree(m_connection.get(), m_screen->root);
    X11Reply<xcb_query_tree_reply_t> reply(xcb_query_tree_reply(m_connection.get(), cookie, nullptr));
    if (!reply)
        return {};
    const xcb_window_t *children = xcb_query_tree_children(reply.get());
    return {children, children + reply->children_len};
}

QList<xcb_window_t> X11Composer::managedWindows()
{
    const auto cookie =
        xcb_get_property(m_connection.get(), false, m_screen->root, m_clientList, XCB_ATOM_WINDOW, 0, 65536);
    X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection.get(), cookie, nullptr));
    const auto windows = propertyWindows(reply.get());
    return {windows.begin(), windows.end()};
}

QList<X11WindowPlace> X11Composer::viewableWindows()
{
    if (!m_usable)
        return {};
    xcb_connection_t *c = m_connection.get();
    QList<xcb_window_t> windows = managedWindows();
    for (const xcb_window_t child : rootChildren()) {
        if (!windows.contains(child))
            windows.append(child);
    }
    struct Pending
    {
        xcb_get_window_attributes_cookie_t attributes;
        xcb_get_geometry_cookie_t geometry;
        xcb_translate_coordinates_cookie_t position;
    };
    std::vector<Pending> pending;
    for (const xcb_window_t window : windows)
        pending.push_back({xcb_get_window_attributes(c, window), xcb_get_geometry(c, window),
                           xcb_translate_coordinates(c, window, m_screen->root, 0, 0)});
    QList<X11WindowPlace> places;
    for (size_t i = 0; i < pending.size(); ++i) {
        X11Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(c, pending[i].attributes, nullptr));
        X11Reply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(c, pending[i].geometry, nullptr));
        X11Reply<xcb_translate_coordinates_reply_t> position(
            xcb_translate_coordinates_reply(c, pending[i].position, nullptr));
        if (attributes && geometry && position && attributes->map_state == XCB_MAP_STATE_VIEWABLE)
            places.append(
                {windows[qsizetype(i)], QRect(position->dst_x, position->dst_y, geometry->width, geometry->height)});
    }
    drainErrors();
    return places;
}

xcb_window_t X11Composer::rootAncestor(xcb_window_t window)
{
    for (int depth = 0; depth < maximumNesting; ++depth) {
        const auto cookie = xcb_query_tree(m_connection.get(), window);
        X11Reply<xcb_query_tree_reply_t> reply(xcb_query_tree_reply(m_connection.get(), cookie, nullptr));
        if (!reply)
            return XCB_WINDOW_NONE;
        if (reply->parent == m_screen->root)
            return window;
        window = reply->parent;
    }
    return XCB_WINDOW_NONE;
}

QList<xcb_window_t> X11Composer::ourTopLevels(const QList<xcb_window_t> &children)
{
    xcb_connection_t *c = m_connection.get();
    QList<xcb_window_t> ours;
    for (const xcb_window_t window : managedWindows()) {
        if (m_ours.contains(window))
            ours.append(rootAncestor(window));
    }
    // A window that was mapped a moment ago may not be listed yet, but its frame already holds it.
    std::vector<xcb_query_tree_cookie_t> cookies;
    for (const xcb_window_t child : children)
        cookies.push_back(xcb_query_tree(c, child));
    for (size_t i = 0; i < cookies.size(); ++i) {
        X11Reply<xcb_query_tree_reply_t> reply(xcb_query_tree_reply(c, cookies[i], nullptr));
        const xcb_window_t child = children[qsizetype(i)];
        const xcb_window_t *inner = reply ? xcb_query_tree_children(reply.get()) : nullptr;
        const int count = reply ? reply->children_len : 0;
        if (m_ours.contains(child) ||
            std::any_of(inner, inner + count, [&](xcb_window_t window) { return m_ours.contains(window); }))
            ours.append(child);
    }
    return ours;
}

QList<X11Composer::TopLevel> X11Composer::foreignTopLevels(const QRect &area)
{
    xcb_connection_t *c = m_connection.get();
    const QList<xcb_window_t> children = rootChildren();
    const QList<xcb_window_t> ours = ourTopLevels(children);
    struct Pending
    {
        xcb_window_t window;
        xcb_get_window_attributes_cookie_t attributes;
        xcb_get_geometry_cookie_t geometry;
        xcb_shape_query_extents_cookie_t shape;
        xcb_get_property_cookie_t opacity;
    };
    std::vector<Pending> pending;
    for (const xcb_window_t child : children) {
        if (!ours.contains(child))
            pending.push_back({child, xcb_get_window_attributes(c, child), xcb_get_geometry(c, child),
                               xcb_shape_query_extents(c, child),
                               xcb_get_property(c, false, child, m_opacity, XCB_ATOM_CARDINAL, 0, 1)});
    }
    QList<TopLevel> windows;
    for (const Pending &cookie : pending) {
        X11Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(c, cookie.attributes, nullptr));
        X11Reply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(c, cookie.geometry, nullptr));
        X11Reply<xcb_shape_query_extents_reply_t> shape(xcb_shape_query_extents_reply(c, cookie.shape, nullptr));
        X11Reply<xcb_get_property_reply_t> opacity(xcb_get_property_reply(c, cookie.opacity, nullptr));
        if (!attributes || !geometry || attributes->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT ||
            attributes->map_state != XCB_MAP_STATE_VIEWABLE)
            continue;
        const int border = geometry->border_width;
        const QRect outer(geometry->x, geometry->y, geometry->width + 2 * border, geometry->height + 2 * border);
        if (!outer.intersects(area))
            continue;
        const auto opacities = propertyWindows(opacity.get());
        windows.append({.window = cookie.window,
                        .visual = attributes->visual,
                        .origin = outer.topLeft(),
                        .size = outer.size(),
                        .border = border,
                        .isShaped = shape && shape->bounding_shaped,
                        .opacity = opacities.empty() ? quint16(0xffff) : quint16(opacities.front() >> 16)});
    }
    return windows;
}

void X11Composer::paintBackground(xcb_render_picture_t target, const QRect &area)
{
    xcb_connection_t *c = m_connection.get();
    const auto cookie = xcb_get_property(c, false, m_screen->root, m_rootPixmap, XCB_ATOM_PIXMAP, 0, 1);
    X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(c, cookie, nullptr));
    const auto pixmaps = propertyWindows(reply.get());
    if (pixmaps.empty()) {
        paintPlainBackground(target, area);
        return;
    }
    const xcb_render_picture_t background = xcb_generate_id(c);
    const quint32 repeat = XCB_RENDER_REPEAT_NORMAL;
    xcb_render_create_picture(c, background, pixmaps.front(), m_formats[m_screen->root_visual], XCB_RENDER_CP_REPEAT,
                              &repeat);
    xcb_render_composite(c, XCB_RENDER_PICT_OP_OVER, background, XCB_RENDER_PICTURE_NONE, target, qint16(area.x()),
                         qint16(area.y()), 0, 0, 0, 0, quint16(area.width()), quint16(area.height()));
    xcb_render_free_picture(c, background);
}

/// Without a picture set by the desktop, the root window itself shows its background, but only where no window covers
/// it: beneath our own it holds what the server has drawn of them. There a colour that shows elsewhere stands in.
void X11Composer::paintPlainBackground(xcb_render_picture_t target, const QRect &area)
{
    xcb_connection_t *c = m_connection.get();
    QRegion free(0, 0, m_screen->width_in_pixels, m_screen->height_in_pixels);
    for (const X11WindowPlace &place : viewableWindows())
        free -= place.frame;
    const QRegion freeBeneath = free & area;
    if (free.isEmpty())
        return;
    const xcb_rectangle_t whole{0, 0, quint16(area.width()), quint16(area.height())};
    const QRegion &sampled = freeBeneath.isEmpty() ? free : freeBeneath;
    xcb_render_fill_rectangles(c, XCB_RENDER_PICT_OP_SRC, target, rootColour(sampled.begin()->topLeft()), 1, &whole);
    const xcb_render_picture_t root = xcb_generate_id(c);
    xcb_render_create_picture(c, root, m_screen->root, m_formats[m_screen->root_visual], 0, nullptr);
    for (const QRect &rect : freeBeneath)
        xcb_render_composite(c, XCB_RENDER_PICT_OP_OVER, root, XCB_RENDER_PICTURE_NONE, target, qint16(rect.x()),
                             qint16(rect.y()), 0, 0, qint16(rect.x() - area.x()), qint16(rect.y() - area.y()),
                             quint16(rect.width()), quint16(rect.height()));
    xcb_render_free_picture(c, root);
}

xcb_render_color_t X11Composer::rootColour(QPoint place)
{
    const auto cookie = xcb_get_image(m_connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_screen->root, qint16(place.x()),
                                      qint16(place.y()), 1, 1, ~0U);
    X11Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(m_connection.get(), cookie, nullptr));
    if (!reply || xcb_get_image_data_length(reply.get()) < 4)
        return {0, 0, 0, 0xffff};
    const quint8 *pixel = xcb_get_image_data(reply.get()); // blue, green, red
    const auto wide = [](quint8 value) { return quint16(value * 0x101); };
    return {wide(pixel[2]), wide(pixel[1]), wide(pixel[0]), 0xffff};
}

void X11Composer::blend(const TopLevel &window, xcb_render_picture_t target, const QRect &area)
{
    const auto format = m_formats.find(window.visual);
    if (format == m_formats.end())
        return;
    xcb_connection_t *c = m_connection.get();
    const xcb_pixmap_t pixmap = xcb_generate_id(c);
    const xcb_render_picture_t source = xcb_generate_id(c);
    xcb_composite_name_window_pixmap(c, window.window, pixmap);
    xcb_render_create_picture(c, source, pixmap, format->second, 0, nullptr);

    const QPoint place = window.origin - area.topLeft();
    xcb_render_picture_t mask = XCB_RENDER_PICTURE_NONE;
    if (window.opacity != 0xffff) {
        mask = xcb_generate_id(c);
        xcb_render_create_solid_fill(c, mask, {0, 0, 0, window.opacity});
    }
    xcb_xfixes_region_t region = XCB_XFIXES_REGION_NONE;
    if (window.isShaped) {
        region = xcb_generate_id(c);
        xcb_xfixes_create_region_from_window(c, region, window.window, XCB_SHAPE_SK_BOUNDING);
        xcb_xfixes_set_picture_clip_region(c, target, region, qint16(place.x() + window.border),
                                           qint16(place.y() + window.border));
    }
    xcb_render_composite(c, XCB_RENDER_PICT_OP_OVER, source, mask, target, 0, 0, 0, 0, qint16(place.x()),
                         qint16(place.y()), quint16(window.size.width()), quint16(window.size.height()));
    if (region != XCB_XFIXES_REGION_NONE) {
        xcb_xfixes_set_picture_clip_region(c, target, XCB_XFIXES_REGION_NONE, 0, 0);
        xcb_xfixes_destroy_region(c, region);
    }
    if (mask != XCB_RENDER_PICTURE_NONE)
        xcb_render_free_picture(c, mask);
    xcb_render_free_picture(c, source);
    xcb_free_pixmap(c, pixmap);
}

QImage X11Composer::compose(const QRect &area)
{
    if (!m_usable || area.isEmpty())
        return {};
    const bool onlyForThis = !m_redirecting;
    setRedirecting(true);
    std::this_thread::sleep_until(m_redirectedAt + settlingTime);

    xcb_connection_t *c = m_connection.get();
    const xcb_pixmap_t pixmap = xcb_generate_id(c);
    const xcb_render_picture_t target = xcb_generate_id(c);
    xcb_create_pixmap(c, 32, pixmap, m_screen->root, quint16(area.width()), quint16(area.height()));
    xcb_render_create_picture(c, target, pixmap, m_argbFormat, 0, nullptr);
    const xcb_rectangle_t whole{0, 0, quint16(area.width()), quint16(area.height())};
    xcb_render_fill_rectangles(c, XCB_RENDER_PICT_OP_SRC, target, {0, 0, 0, 0xffff}, 1, &whole);
    paintBackground(target, area);
    for (const TopLevel &window : foreignTopLevels(area))
        blend(window, target, area);
    QImage image = read(pixmap, area.size());
    xcb_render_free_picture(c, target);
    xcb_free_pixmap(c, pixmap);
    if (onlyForThis)
        setRedirecting(false);
    xcb_flush(c);
    drainErrors();
    return image;
}

bool X11Composer::hasForeignWindows(const QRect &area)
{
    return !foreignTopLevels(area).isEmpty();
}

QImage X11Composer::read(xcb_pixmap_t pixmap, const QSize &size)
{
    xcb_connection_t *c = m_connection.get();
    const size_t byteCount = size_t(size.width()) * size_t(size.height()) * 4;
    if (!m_shared || m_shared->size < byteCount) {
        if (m_shared && m_shared->data)
            xcb_shm_detach(c, m_shared->segment);
        m_shared = std::make_unique<SharedImage>(c, byteCount);
    }
    if (m_shared->data) {
        const auto cookie = xcb_shm_get_image(c, pixmap, 0, 0, quint16(size.width()), quint16(size.height()), ~0U,
                                              XCB_IMAGE_FORMAT_Z_PIXMAP, m_shared->segment, 0);
        X11Reply<xcb_shm_get_image_reply_t> reply(xcb_shm_get_image_reply(c, cookie, nullptr));
        return reply ? QImage(m_shared->data, size.width(), size.height(), QImage::Format_RGB32).copy() : QImage();
    }
    const auto cookie =
        xcb_get_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, 0, 0, quint16(size.width()), quint16(size.height()), ~0U);
    X11Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(c, cookie, nullptr));
    if (!reply || size_t(xcb_get_image_data_length(reply.get())) < byteCount)
        return {};
    return QImage(xcb_get_image_data(reply.get()), size.width(), size.height(), QImage::Format_RGB32).copy();
}

void X11Composer::drainErrors()
{
    // Errors of unchecked requests arrive as events: a window went away while we looked at it.
    while (xcb_generic_event_t *event = xcb_poll_for_event(m_connection.get()))
        std::free(event);
}

} // namespace lucentra
