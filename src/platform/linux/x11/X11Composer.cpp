#include "X11Composer.h"

#include <QRegion>

#include <xcb/composite.h>
#include <xcb/shape.h>
#include <xcb/shm.h>
#include <xcb/xfixes.h>

#include <sys/ipc.h>
#include <sys/shm.h>

#include <thread>
#include <utility>

using namespace Qt::StringLiterals;

namespace lucentra {

namespace {

/// Returns a null image if memory can't be shared, or if there is no such pixmap.
QImage readShared(xcb_connection_t *c, xcb_pixmap_t pixmap, const QSize &size)
{
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(c, &xcb_shm_id);
    if (!extension || !extension->present)
        return {};
    const int id = shmget(IPC_PRIVATE, size_t(size.width()) * size_t(size.height()) * 4, IPC_CREAT | 0600);
    if (id < 0)
        return {};
    void *data = shmat(id, nullptr, 0);
    X11Reply<xcb_shm_get_image_reply_t> reply;
    if (data != reinterpret_cast<void *>(-1)) {
        const xcb_shm_seg_t segment = xcb_generate_id(c);
        xcb_shm_attach(c, segment, quint32(id), false); // if it fails, so does the next request
        reply = x11Ask(c, xcb_shm_get_image, xcb_shm_get_image_reply, pixmap, 0, 0, quint16(size.width()),
                       quint16(size.height()), ~0U, XCB_IMAGE_FORMAT_Z_PIXMAP, segment, 0);
        xcb_shm_detach(c, segment);
        if (!reply)
            shmdt(data);
    }
    shmctl(id, IPC_RMID, nullptr); // goes when the last side detaches, also after a crash
    if (!reply)
        return {};
    // The last copy may be deleted on any thread.
    return QImage(static_cast<uchar *>(data), size.width(), size.height(), QImage::Format_RGB32,
                  [](void *attached) { shmdt(attached); }, data);
}

/// Reads a pixmap of 32 bits per pixel from its top-left corner, by shared memory if the X server supports it. The
/// image then owns that memory. Blocks; returns a null image on failure.
QImage readX11Pixmap(xcb_connection_t *c, xcb_pixmap_t pixmap, const QSize &size)
{
    if (QImage image = readShared(c, pixmap, size); !image.isNull())
        return image;
    const auto reply = x11Ask(c, xcb_get_image, xcb_get_image_reply, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, 0, 0,
                              quint16(size.width()), quint16(size.height()), ~0U);
    if (!reply || size_t(xcb_get_image_data_length(reply.get())) < size_t(size.width()) * size_t(size.height()) * 4)
        return {};
    return QImage(xcb_get_image_data(reply.get()), size.width(), size.height(), QImage::Format_RGB32).copy();
}

} // namespace

X11Composer::X11Composer(X11ResourceRange ours)
    : m_ours(ours)
{
    int screenNumber = 0;
    m_connection.reset(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(m_connection.get()))
        return;
    m_screen = x11Screen(m_connection.get(), screenNumber);
    m_missing = missingExtensions();
    if (m_missing.isEmpty())
        prepareExtensions();
}

QStringList X11Composer::missingExtensions() const
{
    xcb_connection_t *c = m_connection.get();
    const std::pair<xcb_extension_t *, QString> needed[]{{&xcb_composite_id, u"Composite"_s},
                                                         {&xcb_render_id, u"RENDER"_s},
                                                         {&xcb_xfixes_id, u"XFIXES"_s},
                                                         {&xcb_shape_id, u"SHAPE"_s}};
    for (const auto &[extension, name] : needed)
        xcb_prefetch_extension_data(c, extension);
    xcb_prefetch_extension_data(c, &xcb_shm_id);
    QStringList missing;
    for (const auto &[extension, name] : needed) {
        const xcb_query_extension_reply_t *reply = xcb_get_extension_data(c, extension);
        if (!reply || !reply->present)
            missing.append(name);
    }
    return missing;
}

void X11Composer::prepareExtensions()
{
    xcb_connection_t *c = m_connection.get();
    const auto composite = xcb_composite_query_version(c, 0, 4);
    const auto fixes = xcb_xfixes_query_version(c, 4, 0);
    const auto formats = xcb_render_query_pict_formats(c);
    const auto compositeReply = x11Await(c, xcb_composite_query_version_reply, composite);
    const auto fixesReply = x11Await(c, xcb_xfixes_query_version_reply, fixes);
    const auto formatsReply = x11Await(c, xcb_render_query_pict_formats_reply, formats);
    for (const auto &[isThere, name] :
         {std::pair(compositeReply != nullptr, u"Composite"_s), std::pair(fixesReply != nullptr, u"XFIXES"_s),
          std::pair(formatsReply != nullptr, u"RENDER"_s)}) {
        if (!isThere)
            m_missing.append(name);
    }
    if (!m_missing.isEmpty())
        return;

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
    m_rootPixmap = x11Atom(c, "_XROOTPMAP_ID");
    m_windows.emplace(c, m_screen, m_ours);
    if (!m_argbFormat)
        m_missing.append(u"ARGB32"_s);
}

void X11Composer::setRedirecting(bool redirecting)
{
    if (!isUsable() || redirecting == m_redirecting)
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

void X11Composer::paintBackground(xcb_render_picture_t target, const QRect &area)
{
    xcb_connection_t *c = m_connection.get();
    const auto reply =
        x11Ask(c, xcb_get_property, xcb_get_property_reply, false, m_screen->root, m_rootPixmap, XCB_ATOM_PIXMAP, 0, 1);
    const auto pixmaps = x11PropertyValues(reply.get());
    // The property may outlive the picture that it names.
    if (pixmaps.empty() || !x11Ask(c, xcb_get_geometry, xcb_get_geometry_reply, pixmaps.front())) {
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

/// If the desktop has set no picture, the root window itself shows its background, but only where no window covers it.
/// Beneath this program's windows it contains what the server has drawn of them; a colour that is visible elsewhere is
/// used there.
void X11Composer::paintPlainBackground(xcb_render_picture_t target, const QRect &area)
{
    xcb_connection_t *c = m_connection.get();
    QRegion free(0, 0, m_screen->width_in_pixels, m_screen->height_in_pixels);
    for (const X11WindowPlace &place : m_windows->viewable())
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
    const auto reply = x11Ask(m_connection.get(), xcb_get_image, xcb_get_image_reply, XCB_IMAGE_FORMAT_Z_PIXMAP,
                              m_screen->root, qint16(place.x()), qint16(place.y()), 1, 1, ~0U);
    if (!reply || xcb_get_image_data_length(reply.get()) < 4)
        return {0, 0, 0, 0xffff};
    const quint8 *pixel = xcb_get_image_data(reply.get()); // blue, green, red
    const auto wide = [](quint8 value) { return quint16(value * 0x101); };
    return {wide(pixel[2]), wide(pixel[1]), wide(pixel[0]), 0xffff};
}

void X11Composer::blend(const X11TopLevel &window, xcb_render_picture_t target, const QRect &area)
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
    if (!isUsable() || area.isEmpty())
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
    for (const X11TopLevel &window : m_windows->foreignTopLevels(area))
        blend(window, target, area);
    QImage image = readX11Pixmap(c, pixmap, area.size());
    xcb_render_free_picture(c, target);
    xcb_free_pixmap(c, pixmap);
    if (onlyForThis)
        setRedirecting(false);
    xcb_flush(c);
    drainErrors();
    return image;
}

QList<X11WindowPlace> X11Composer::viewableWindows()
{
    if (!isUsable())
        return {};
    QList<X11WindowPlace> places = m_windows->viewable();
    drainErrors();
    return places;
}

void X11Composer::drainErrors()
{
    // Errors of unchecked requests arrive as events: a window went away while we looked at it.
    while (xcb_generic_event_t *event = xcb_poll_for_event(m_connection.get()))
        std::free(event);
}

} // namespace lucentra
