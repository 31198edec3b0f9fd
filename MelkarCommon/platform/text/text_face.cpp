#include <MelkarCommon/platform/cairo/handles.h>
#include <MelkarCommon/platform/text/text_decode.h>
#include <MelkarCommon/platform/text/text_face.h>

#include <MelkarCommon/platform/files/log_sink.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/platform/text/font_alias.h>
#include <MelkarCommon/platform/values/ascii.h>
#include <MelkarCommon/platform/values/lru_cache.h>

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <functional>
#include <new>
#include <optional>
#include <sys/mman.h>

namespace melkar {
namespace {

constexpr int kMaxSize = 8000; // more than any page is high
constexpr int kJapaneseCharset = 128;
constexpr int kMinBold = 600;      // weights from here on count as bold in records
constexpr double kFixedAscent = 1; // of the built-in metrics, in ems
constexpr double kFixedDescent = 0.25;
constexpr double kMeasureEm = 1000; // large enough for exact proportions
constexpr std::size_t kMaxFaces = 64;

struct DescriptionFree {
    void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
};
using DescriptionPtr = std::unique_ptr<PangoFontDescription, DescriptionFree>;

std::uint64_t NextId() {
    static std::atomic<std::uint64_t> last{0};
    return ++last;
}

std::atomic<std::size_t> g_missing{0};

/// Without a font Pango ends the process, so it must never be asked then.
bool MachineHasFonts() {
    static thread_local const bool has = [] {
        const FcFontSet* system = FcInit() != 0 ? FcConfigGetFonts(nullptr, FcSetSystem) : nullptr;
        const bool any = system != nullptr && system->nfont > 0;
        if (!any)
            Report("Text: this machine has no fonts");
        return any;
    }();
    return has;
}

ObjectPtr<PangoFontMap>& ThreadFontMap() {
    static thread_local ObjectPtr<PangoFontMap> map;
    return map;
}

PangoFontMap* FontMap() {
    ObjectPtr<PangoFontMap>& map = ThreadFontMap();
    if (!map)
        map.reset(pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT));
    return map.get();
}

/// Han characters have the form of the character set's country; else that of the host's locale.
const char* LanguageOf(int charset) {
    switch (charset) {
    case kJapaneseCharset:
        return "ja";
    case 129:
        return "ko";
    case 134:
        return "zh-cn";
    case 136:
        return "zh-tw";
    default:
        return nullptr;
    }
}

CairoFontOptions MakeOptions(bool wholePixels) {
    CairoFontOptions options(cairo_font_options_create());
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_metrics(options.get(), wholePixels ? CAIRO_HINT_METRICS_ON : CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_hint_style(options.get(), wholePixels ? CAIRO_HINT_STYLE_SLIGHT : CAIRO_HINT_STYLE_NONE);
    return options;
}

/// The language is named also where it is that of the host: a font is then looked for once, to be measured and to
/// shape.
ObjectPtr<PangoContext> MakeContext(const PangoFontDescription* font, int charset, bool wholePixels) {
    ObjectPtr<PangoContext> context(pango_font_map_create_context(FontMap()));
    pango_cairo_context_set_font_options(context.get(), MakeOptions(wholePixels).get());
    pango_context_set_round_glyph_positions(context.get(), wholePixels ? TRUE : FALSE);
    pango_context_set_font_description(context.get(), font);
    const char* language = LanguageOf(charset);
    pango_context_set_language(context.get(), language != nullptr ? pango_language_from_string(language)
                                                                  : pango_language_get_default());
    return context;
}

void SetEm(PangoFontDescription* font, double em) { pango_font_description_set_absolute_size(font, em * PANGO_SCALE); }

int WeightOf(const LOGFONTA& description) {
    return description.lfWeight <= 0 ? FW_NORMAL : std::clamp(description.lfWeight, 100, 1000);
}

DescriptionPtr Describe(const LOGFONTA& description, const std::string& family) {
    DescriptionPtr font(pango_font_description_new());
    pango_font_description_set_family(font.get(), FamiliesFor(family).c_str());
    pango_font_description_set_weight(font.get(), static_cast<PangoWeight>(WeightOf(description)));
    pango_font_description_set_style(font.get(), description.lfItalic != 0 ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    return font;
}

struct Proportions {
    double up = kFixedAscent;
    double down = kFixedDescent;
};

/// The same font without hints, in ems of `kMeasureEm`.
ScaledFont Unhinted(cairo_scaled_font_t* font, double em) {
    cairo_matrix_t size;
    cairo_matrix_t none;
    cairo_scaled_font_get_font_matrix(font, &size);
    cairo_matrix_init_identity(&none);
    for (double* part : {&size.xx, &size.xy, &size.yx, &size.yy})
        *part = *part / em * kMeasureEm; // in this order: exact
    return ScaledFont(
        cairo_scaled_font_create(cairo_scaled_font_get_font_face(font), &size, &none, MakeOptions(false).get()));
}

/// Ascent and descent of the font itself in ems, before any rounding to pixels; nothing if it can't be read.
std::optional<Proportions> Measure(PangoContext* context) {
    const PangoFontDescription* description = pango_context_get_font_description(context);
    const ObjectPtr<PangoFont> loaded(pango_context_load_font(context, description));
    cairo_scaled_font_t* scaled =
        loaded ? pango_cairo_font_get_scaled_font(reinterpret_cast<PangoCairoFont*>(loaded.get())) : nullptr;
    if (scaled == nullptr || cairo_scaled_font_status(scaled) != CAIRO_STATUS_SUCCESS)
        return std::nullopt;
    const double em = static_cast<double>(pango_font_description_get_size(description)) / PANGO_SCALE;
    const ScaledFont exact = Unhinted(scaled, em);
    if (cairo_scaled_font_status(exact.get()) != CAIRO_STATUS_SUCCESS)
        return std::nullopt;
    cairo_font_extents_t extents;
    cairo_scaled_font_extents(exact.get(), &extents);
    if (!(extents.ascent > 0) || !(extents.descent >= 0))
        return Proportions{};
    return Proportions{extents.ascent / kMeasureEm, extents.descent / kMeasureEm};
}

std::string FamilyOf(const LOGFONTA& description) {
    const std::size_t length = strnlen(description.lfFaceName, LF_FACESIZE);
    return DecodeText({description.lfFaceName, length}, description.lfCharSet);
}

std::string NameForRecords(const LOGFONTA& description, const std::string& family, double em) {
    std::string name = (family.empty() ? "sans" : family) + " " + std::to_string(std::lround(em));
    if (WeightOf(description) >= kMinBold)
        name += " bold";
    if (description.lfItalic != 0)
        name += " italic";
    return name;
}

/// A family as CSS has it: generic ones stand as they are, others in quotes, without what would end them.
void AppendFamily(std::string& css, std::string_view family) {
    if (!css.empty())
        css += ',';
    if (family == "sans" || family == "serif" || family == "monospace") {
        css += family == "sans" ? "sans-serif" : family;
        return;
    }
    css += '\'';
    for (const char c : family)
        if (c != '\'' && c != '\\')
            css += c;
    css += '\'';
}

std::string CssFamilies(std::string_view families) {
    std::string css;
    while (!families.empty()) {
        const std::size_t end = std::min(families.find(','), families.size());
        if (end > 0)
            AppendFamily(css, families.substr(0, end));
        families.remove_prefix(std::min(end + 1, families.size()));
    }
    return css;
}

std::shared_ptr<const FontLook> LookOf(const LOGFONTA& description, const std::string& family, double em) {
    const char* language = LanguageOf(description.lfCharSet);
    return std::make_shared<FontLook>(FontLook{CssFamilies(FamiliesFor(family)), language != nullptr ? language : "",
                                               em, WeightOf(description), description.lfItalic != 0});
}

/// The default face in lines of this height.
LOGFONTA InLinesOf(const LOGFONTA& description, int lineHeight) {
    LOGFONTA plain = description;
    plain.lfHeight = lineHeight;
    std::memset(plain.lfFaceName, 0, sizeof plain.lfFaceName);
    return plain;
}

/// The height of a font on a screen, where it is so high on a surface of `dpi`; 0 if it is none to measure with.
int HeightOnScreen(int height, int dpi) {
    const int wanted = height == 0 ? -kDefaultEm : std::clamp(height, -kMaxSize, kMaxSize);
    const int onScreen = MulDiv(wanted, kScreenDpi, dpi);
    return std::abs(onScreen) <= kMaxSize ? onScreen : 0;
}

/// What distinguishes faces. Angles belong to painting, and width, precisions and pitch have no effect.
struct FaceKey {
    LOGFONTA description;
    int medium;
    int dpi;
    bool operator==(const FaceKey& other) const { return std::memcmp(this, &other, sizeof *this) == 0; }
};
static_assert(sizeof(FaceKey) == sizeof(LOGFONTA) + 2 * sizeof(int), "compared and hashed as bytes");

FaceKey MakeKey(const LOGFONTA& description, TextMedium medium, int dpi) {
    FaceKey key{description, static_cast<int>(medium), dpi};
    key.description.lfWidth = 0;
    key.description.lfEscapement = 0;
    key.description.lfOrientation = 0;
    key.description.lfOutPrecision = 0;
    key.description.lfClipPrecision = 0;
    key.description.lfQuality = 0;
    key.description.lfPitchAndFamily = 0;
    return key;
}

struct FaceKeyHash {
    std::size_t operator()(const FaceKey& key) const {
        return std::hash<std::string_view>{}({reinterpret_cast<const char*>(&key), sizeof key});
    }
};

struct FaceEntry {
    FaceKey key;
    std::shared_ptr<TextFace> face;
    const FaceKey& Key() const { return key; }
};

using FaceCache = LruCache<FaceKey, FaceEntry, FaceKeyHash>;

FaceCache& ThreadFaces() {
    static thread_local FaceCache faces;
    return faces;
}

} // namespace

FaceSize SizeFace(int height, double up, double down) {
    if (height > 0) {
        const int cell = std::min(height, kMaxSize);
        const double em = std::max(1.0, cell / (up + down));
        return {em, cell, static_cast<int>(std::lround(cell * up / (up + down)))};
    }
    const double em = height == 0 ? double{kDefaultEm} : std::min(-static_cast<double>(height), double{kMaxSize});
    constexpr double kRounding = 1e-6; // a sum that is whole but for rounding isn't rounded up
    return {em, static_cast<int>(std::ceil(em * (up + down) - kRounding)), static_cast<int>(std::lround(em * up))};
}

int ScreenMeasure::ToScreen(int length) const {
    return NearestInt((2 * std::int64_t{length} * kScreenDpi + dpi) / (2 * std::int64_t{dpi}));
}

int ScreenMeasure::FromScreen(int length) const {
    // What is lost is below half a unit here, and at most half a pixel there.
    constexpr std::int64_t kWhole = std::int64_t{2} * kScreenDpi;
    const std::int64_t most = std::min(dpi, kScreenDpi);
    return NearestInt((2 * std::int64_t{length} * dpi - most + kWhole - 1) / kWhole);
}

TextFace::TextFace(const LOGFONTA& description, TextMedium textMedium, int dpi)
    : id(NextId()), medium(textMedium), charset(description.lfCharSet), underline(description.lfUnderline != 0),
      strikeOut(description.lfStrikeOut != 0) {
    const std::string family = FamilyOf(description);
    if (medium != TextMedium::Fixed)
        RequireRoom();
    if (medium != TextMedium::Fixed && MachineHasFonts()) {
        MakeShaper(description, family);
    } else {
        size = SizeFace(description.lfHeight, kFixedAscent, kFixedDescent);
        g_missing += medium != TextMedium::Fixed ? 1 : 0;
    }
    const bool isReadable = shaper != nullptr && !unknownReported; // else it is told already
    if (isReadable && (medium == TextMedium::Page || dpi != kScreenDpi))
        MeasureOnScreen(description, dpi);
    name = NameForRecords(description, family, size.em);
    look = LookOf(description, family, size.em);
    if (shaper != nullptr && charset != kJapaneseCharset && IsJapanese(family) && !HasFamily(family))
        forOthers = std::make_shared<TextFace>(InLinesOf(description, size.lineHeight), medium, dpi);
}

/// Whether the machine has the font itself, and nothing has to stand in for it.
bool TextFace::HasFamily(const std::string& family) const {
    const ObjectPtr<PangoFont> font(
        pango_context_load_font(shaper.get(), pango_context_get_font_description(shaper.get())));
    const DescriptionPtr found(font ? pango_font_describe(font.get()) : pango_font_description_new());
    const char* name = pango_font_description_get_family(found.get());
    return name != nullptr && EqualNoCase(name, family);
}

void TextFace::MakeShaper(const LOGFONTA& description, const std::string& family) {
    const DescriptionPtr font = Describe(description, family);
    const bool wholePixels = medium == TextMedium::Pixels;
    const bool isOfEm = description.lfHeight <= 0; // else the em is known when the font is measured
    SetEm(font.get(), isOfEm ? SizeFace(description.lfHeight, kFixedAscent, kFixedDescent).em : kMeasureEm);
    shaper = MakeContext(font.get(), charset, wholePixels);
    const std::optional<Proportions> measured = Measure(shaper.get());
    if (!measured) { // its file is gone, or there is no descriptor left to open it with
        Report(("Text: a font for [" + family + "] can't be read, texts are missing").c_str());
        ++g_missing;
        unknownReported = true; // what shows no text has no characters either
    }
    const Proportions proportions = measured.value_or(Proportions{});
    size = SizeFace(description.lfHeight, proportions.up, proportions.down);
    if (isOfEm)
        return;
    SetEm(font.get(), size.em);
    shaper = MakeContext(font.get(), charset, wholePixels);
}

/// Lines of a font that is asked for by its em are as high as on the screen, those of a cell as high as the cell.
void TextFace::MeasureOnScreen(const LOGFONTA& description, int dpi) {
    LOGFONTA onScreen = description;
    onScreen.lfHeight = HeightOnScreen(description.lfHeight, dpi);
    if (onScreen.lfHeight == 0)
        return;
    measure = ScreenMeasure{FindFace(onScreen, TextMedium::Pixels), dpi};
    if (description.lfHeight > 0)
        return;
    size.lineHeight = MulDiv(measure->face->size.lineHeight, dpi, kScreenDpi);
    size.ascent = MulDiv(measure->face->size.ascent, dpi, kScreenDpi);
}

const std::shared_ptr<TextFace>& FindFace(const LOGFONTA& description, TextMedium medium, int dpi) {
    FaceCache& faces = ThreadFaces();
    const FaceKey key = MakeKey(description, medium, dpi);
    if (const FaceEntry* entry = faces.Find(key))
        return entry->face;
    auto face = std::make_shared<TextFace>(description, medium, dpi); // which may find another one
    while (faces.Size() >= kMaxFaces)
        faces.DropOldest();
    return faces.Add({key, std::move(face)}).face;
}

void RequireRoom() {
    constexpr std::size_t kRoom = std::size_t{48} << 20;
    void* room = mmap(nullptr, kRoom, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (room != MAP_FAILED) {
        munmap(room, kRoom);
        return;
    }
    if (g_missing++ == 0)
        Report("Text: no memory for fonts, texts are missing");
    throw std::bad_alloc();
}

std::size_t CountOfMissingFonts() { return g_missing; }

void DropFaces() {
    ThreadFaces() = {};
    ThreadFontMap().reset();
}

} // namespace melkar
