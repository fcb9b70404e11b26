/* Preloaded into programs, shows where they write: with GLYPHS=none no letter is drawn, with GLYPHS=boxes each character,
 * a space too, is a box on the base line as wide as the character, with GLYPHS=scripts ideographs, kana and hangul only,
 * each at a height of its own. Metrics don't change much, so that windows look the same otherwise.
 *
 * cc -shared -fPIC -O2 $(pkg-config --cflags freetype2) glyphs.c -o glyphs.so -ldl
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <stdlib.h>
#include <string.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

enum { Shown, None, Boxes, Scripts };

struct FaceScripts
{
    FT_Face face;
    FT_Long count;
    unsigned char *of; /* each glyph */
    struct FaceScripts *next;
};

static int mode(void)
{
    static int known = -1;
    if (known < 0) {
        const char *wanted = getenv("GLYPHS");
        known = !wanted                        ? Shown
                : strcmp(wanted, "none") == 0  ? None
                : strcmp(wanted, "boxes") == 0 ? Boxes
                                               : Scripts;
    }
    return known;
}

static unsigned char script_of(FT_ULong c)
{
    if (c == 0x3005 || (c >= 0x3400 && c <= 0x9fff) || (c >= 0xf900 && c <= 0xfaff))
        return 1;
    if ((c >= 0x3041 && c <= 0x3096) || (c >= 0x30a1 && c <= 0x30ff))
        return 2;
    if ((c >= 0x1100 && c <= 0x11ff) || (c >= 0x3130 && c <= 0x318f) || (c >= 0xac00 && c <= 0xd7a3))
        return 3;
    return 0;
}

static unsigned char script(FT_Face face, FT_UInt glyph)
{
    static __thread struct FaceScripts *faces;
    struct FaceScripts *known = faces;
    while (known && (known->face != face || known->count != face->num_glyphs))
        known = known->next;
    if (!known) {
        known = calloc(1, sizeof *known);
        known->face = face;
        known->count = face->num_glyphs;
        known->of = calloc(1, (size_t)face->num_glyphs + 1);
        known->next = faces;
        faces = known;
        FT_UInt found;
        for (FT_ULong c = FT_Get_First_Char(face, &found); found; c = FT_Get_Next_Char(face, c, &found))
            if (found <= (FT_UInt)face->num_glyphs && !known->of[found])
                known->of[found] = script_of(c);
    }
    return glyph <= (FT_UInt)known->count ? known->of[glyph] : 0;
}

/* Shares of the em above the base line. */
static void box(FT_GlyphSlot slot, FT_Face face, double low, double high)
{
    const FT_Pos em = (FT_Pos)face->size->metrics.y_ppem * 64;
    const FT_Pos right = slot->advance.x, bottom = (FT_Pos)(low * em), top = (FT_Pos)(high * em);
    FT_Outline *const outline = &slot->outline;
    FT_Vector *const points = malloc(4 * sizeof *points); /* the slot may keep it for ever */
    char *const tags = malloc(4);
    short *const contours = malloc(sizeof *contours);
    points[0] = (FT_Vector){0, bottom};
    points[1] = (FT_Vector){0, top};
    points[2] = (FT_Vector){right, top};
    points[3] = (FT_Vector){right, bottom};
    memset(tags, FT_CURVE_TAG_ON, 4);
    contours[0] = 3;
    outline->points = points;
    outline->tags = (void *)tags;
    outline->contours = contours;
    outline->n_points = 4;
    outline->n_contours = 1;
    slot->metrics.horiBearingX = 0;
    slot->metrics.horiBearingY = top;
    slot->metrics.width = right;
    slot->metrics.height = top - bottom;
}

FT_Error FT_Load_Glyph(FT_Face face, FT_UInt glyph, FT_Int32 flags)
{
    static FT_Error (*load)(FT_Face, FT_UInt, FT_Int32);
    static FT_Error (*render)(FT_GlyphSlot, FT_Render_Mode);
    if (!load) {
        load = (FT_Error(*)(FT_Face, FT_UInt, FT_Int32))dlsym(RTLD_NEXT, "FT_Load_Glyph");
        render = (FT_Error(*)(FT_GlyphSlot, FT_Render_Mode))dlsym(RTLD_NEXT, "FT_Render_Glyph");
    }
    if (mode() == Shown || !FT_IS_SCALABLE(face) || (flags & FT_LOAD_NO_SCALE) || !face->size)
        return load(face, glyph, flags);
    const FT_Error error = load(face, glyph, (flags & ~FT_LOAD_RENDER) | FT_LOAD_NO_BITMAP);
    FT_GlyphSlot slot = face->glyph;
    if (error || slot->format != FT_GLYPH_FORMAT_OUTLINE)
        return error;
    static const double low[] = {0, 0.05, 0.05, 0.3}, high[] = {0, 0.45, 0.2, 0.45};
    const unsigned char kind = mode() == Scripts ? script(face, glyph) : 0;
    if (mode() == Boxes)
        box(slot, face, 0.05, 0.45);
    else if (kind)
        box(slot, face, low[kind], high[kind]);
    else
        slot->outline.n_points = slot->outline.n_contours = 0;
    return flags & FT_LOAD_RENDER ? render(slot, FT_LOAD_TARGET_MODE(flags)) : 0;
}

FT_Error FT_Load_Char(FT_Face face, FT_ULong character, FT_Int32 flags)
{
    return FT_Load_Glyph(face, FT_Get_Char_Index(face, character), flags);
}
