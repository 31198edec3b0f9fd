#include <MelkarCommon/gtk4/chart.h>

#include "chart_view.h"
#include "spoken_table.h"

#include <MelkarCommon/hosts.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

namespace melkar::gtk4 {
namespace {

using widgets::ChartView;
using widgets::Stride;

constexpr int kLeastWidth = 80; // less shows nothing of any chart
constexpr int kLeastHeight = 40;

Glib::Value<Glib::ustring> ValueOf(const std::string& text) {
    Glib::Value<Glib::ustring> value;
    value.init(Glib::Value<Glib::ustring>::value_type());
    value.set(text);
    return value;
}

std::size_t BytesOf(const PixelView& view) {
    return static_cast<std::size_t>(view.stride) * static_cast<std::size_t>(view.height) * sizeof(std::uint32_t);
}

Glib::RefPtr<Gdk::Texture> TextureOf(const PixelView& view, const Glib::RefPtr<const Glib::Bytes>& bytes) {
    return Gdk::MemoryTexture::create(view.width, view.height, Gdk::MemoryTexture::Format::B8G8R8A8_PREMULTIPLIED,
                                      bytes, static_cast<gsize>(view.stride) * sizeof(std::uint32_t));
}

/// Without a copy: the picture keeps its memory as long as the texture lives. It may be painted on again once the
/// widget asks to be drawn anew, by another texture.
Glib::RefPtr<Gdk::Texture> LentTexture(const widgets::ShownPixels& pixels) {
    auto* owner = new std::shared_ptr<const void>(pixels.owner);
    const auto release = [](void* kept) { delete static_cast<std::shared_ptr<const void>*>(kept); };
    GBytes* bytes = g_bytes_new_with_free_func(pixels.view.pixels, BytesOf(pixels.view), release, owner);
    return TextureOf(pixels.view, Glib::wrap(bytes));
}

Glib::RefPtr<Gdk::Texture> CopiedTexture(const PixelView& view) {
    return TextureOf(view, Glib::Bytes::create(view.pixels, BytesOf(view)));
}

CPoint PointOf(double x, double y) { return {static_cast<int>(std::floor(x)), static_cast<int>(std::floor(y))}; }

void AppendFrame(Gtk::Snapshot& snapshot, const CRect& box, int width, const Gdk::RGBA& color) {
    const int tall = box.Height() - 2 * width;
    snapshot.append_color(color, Gdk::Rectangle(box.left, box.top, box.Width(), width));
    snapshot.append_color(color, Gdk::Rectangle(box.left, box.bottom - width, box.Width(), width));
    snapshot.append_color(color, Gdk::Rectangle(box.left, box.top + width, width, tall));
    snapshot.append_color(color, Gdk::Rectangle(box.right - width, box.top + width, width, tall));
}

/// Blue within white, to be seen on any ground.
void AppendRing(Gtk::Snapshot& snapshot, CRect box) {
    AppendFrame(snapshot, box, 1, Gdk::RGBA("#ffffff"));
    box.DeflateRect(1, 1);
    AppendFrame(snapshot, box, 2, Gdk::RGBA("#1c71d8"));
    box.DeflateRect(2, 2);
    AppendFrame(snapshot, box, 1, Gdk::RGBA("#ffffff"));
}

std::optional<Stride> StrideOf(guint key) {
    switch (key) {
    case GDK_KEY_Right:
    case GDK_KEY_KP_Right:
    case GDK_KEY_Down:
    case GDK_KEY_KP_Down:
        return Stride::Next;
    case GDK_KEY_Left:
    case GDK_KEY_KP_Left:
    case GDK_KEY_Up:
    case GDK_KEY_KP_Up:
        return Stride::Previous;
    case GDK_KEY_Home:
    case GDK_KEY_KP_Home:
        return Stride::First;
    case GDK_KEY_End:
    case GDK_KEY_KP_End:
        return Stride::Last;
    case GDK_KEY_Page_Down:
    case GDK_KEY_KP_Page_Down:
        return Stride::WeekOn;
    case GDK_KEY_Page_Up:
    case GDK_KEY_KP_Page_Up:
        return Stride::WeekBack;
    default:
        return std::nullopt;
    }
}

bool IsClick(guint key) {
    return key == GDK_KEY_Return || key == GDK_KEY_KP_Enter || key == GDK_KEY_ISO_Enter || key == GDK_KEY_space;
}

bool IsMenu(guint key, Gdk::ModifierType state) {
    const bool isShifted = (state & Gdk::ModifierType::SHIFT_MASK) == Gdk::ModifierType::SHIFT_MASK;
    return key == GDK_KEY_Menu || (key == GDK_KEY_F10 && isShifted);
}

/// Those of windows and menus.
bool IsShortcut(Gdk::ModifierType state) {
    return (state & (Gdk::ModifierType::CONTROL_MASK | Gdk::ModifierType::ALT_MASK | Gdk::ModifierType::SUPER_MASK)) !=
           Gdk::ModifierType{};
}

} // namespace

/// All that a host doesn't see. The picture is drawn where the size is given, the rest when GTK is idle: nobody may add
/// children or call hosts while sizes are given.
class Chart::Works {
public:
    Works(Chart& chart, PictureMaker make, ChartLooks looks, std::string data);
    ~Works();

    void Refresh(); ///< soon
    void Place(int width, int height);
    void Paint(Gtk::Snapshot& snapshot);
    void Repaint(); ///< the pixels have changed
    void JudgeDesktop();
    void SetWords(const ChartMenuWords& words);
    void Copy();
    void AskForFile(const char* suffix);
    void SetUpPrint(Gtk::PrintOperation& print);
    void Print();

    ChartView view;
    ChartMenuWords words;
    int naturalWidth = 720;
    int naturalHeight = 400;
    bool isDark = false;
    sigc::signal<void(long)> onDay;
    sigc::signal<void(bool)> onDark;
    sigc::signal<void(long)> onDrawn;

private:
    void ListenToPointer();
    void ListenToKeys();
    void AddActions();
    void WhenIdle();
    void LetGo();
    void PaintReason(Gtk::Snapshot& snapshot, const CRect& whole);
    bool IsKey(guint key, Gdk::ModifierType state);
    bool WalkOn(Stride stride);
    void EndWalk();
    void Click(long day);
    void OpenMenu(CPoint point);
    void Complain(const std::string& reason);
    Gtk::Window* Window() const { return dynamic_cast<Gtk::Window*>(m_chart.get_root()); }

    Chart& m_chart;
    SpokenTable m_table;
    Gtk::PopoverMenu m_menu;
    Glib::RefPtr<Gdk::Texture> m_texture; ///< null when the pixels have changed
    Glib::RefPtr<Gtk::FileChooserNative> m_chooser;
    std::unique_ptr<Gtk::MessageDialog> m_complaint;
    sigc::connection m_idle;
    std::optional<CPoint> m_pointer; ///< where it is on the picture
    bool m_isNew = false;            ///< a drawing that nobody was told of
};

Chart::Works::Works(Chart& chart, PictureMaker make, ChartLooks looks, std::string data)
    : view(std::move(make), std::move(looks), std::move(data)), m_chart(chart) {
    m_chart.set_focusable();
    m_chart.set_expand();
    m_chart.set_has_tooltip();
    m_table.set_parent(m_chart);
    m_menu.set_parent(m_chart);
    m_menu.set_has_arrow(false);
    m_menu.set_halign(Gtk::Align::START);
    AddActions();
    SetWords(words);
    ListenToPointer();
    ListenToKeys();
    m_chart.signal_destroy().connect([this] { LetGo(); });
    m_chart.property_scale_factor().signal_changed().connect([this] { m_chart.queue_resize(); });
    m_chart.signal_state_flags_changed().connect([this](Gtk::StateFlags) { m_chart.queue_draw(); });
}

Chart::Works::~Works() { LetGo(); }

/// A widget that its window owns ends before this does.
void Chart::Works::LetGo() {
    m_idle.disconnect();
    for (Gtk::Widget* const child : {static_cast<Gtk::Widget*>(&m_menu), static_cast<Gtk::Widget*>(&m_table)})
        if (child->get_parent())
            child->unparent();
}

void Chart::Works::Refresh() {
    if (!m_idle.connected())
        m_idle = Glib::signal_idle().connect(
            [this] {
                WhenIdle();
                return false;
            },
            Glib::PRIORITY_HIGH_IDLE);
}

void Chart::Works::WhenIdle() {
    m_idle.disconnect();
    m_isNew |= view.Update();
    if (!m_isNew)
        return;
    m_isNew = false;
    Repaint();
    const widgets::Told& told = view.Tell();
    m_table.Tell(told);
    const std::string reason = view.HasPicture() ? told.words.description : ResultText(view.Result());
    m_chart.update_property(Property::LABEL, ValueOf(told.words.title));
    m_chart.update_property(Property::DESCRIPTION, ValueOf(reason));
    m_chart.queue_allocate();
    onDrawn.emit(view.Result());
}

void Chart::Works::Repaint() {
    m_texture.reset();
    m_chart.queue_draw();
}

void Chart::Works::Place(int width, int height) {
    view.SetSize(width, height, m_chart.get_scale_factor());
    if (view.Update()) {
        m_isNew = true;
        m_texture.reset();
        Refresh();
    }
    m_table.size_allocate({0, 0, width, height}, -1);
    m_table.Allocate(view.Places());
    m_menu.present();
}

void Chart::Works::Paint(Gtk::Snapshot& snapshot) {
    const CRect whole(0, 0, m_chart.get_width(), m_chart.get_height());
    const widgets::ShownPixels pixels = view.Pixels();
    if (pixels.view.pixels) {
        if (!m_texture)
            m_texture = LentTexture(pixels);
        snapshot.append_texture(m_texture, Gdk::Rectangle(0, 0, whole.Width(), whole.Height()));
    } else if (view.Result() != kOk) {
        PaintReason(snapshot, whole);
    }
    const bool isRinged = (m_chart.get_state_flags() & Gtk::StateFlags::FOCUS_VISIBLE) != Gtk::StateFlags{};
    if (const CRect ring = view.Ring(); ring.right > ring.left)
        AppendRing(snapshot, ring);
    else if (isRinged && m_chart.has_focus())
        AppendRing(snapshot, whole);
}

/// In the middle.
void Chart::Works::PaintReason(Gtk::Snapshot& snapshot, const CRect& whole) {
    const auto layout = m_chart.create_pango_layout(words.noPicture + ": " + ResultText(view.Result()));
    layout->set_width(whole.Width() * Pango::SCALE);
    layout->set_alignment(Pango::Alignment::CENTER);
    const graphene_point_t down{
        0, static_cast<float>(whole.Height() - layout->get_pixel_logical_extents().get_height()) / 2};
    snapshot.save();
    gtk_snapshot_translate(snapshot.gobj(), &down);
    snapshot.append_layout(layout, m_chart.get_style_context()->get_color());
    snapshot.restore();
}

/// Themes name themselves as they like; a dark one has light texts.
void Chart::Works::JudgeDesktop() {
    const Gdk::RGBA text = m_chart.get_style_context()->get_color();
    const bool isLight = 0.299 * text.get_red() + 0.587 * text.get_green() + 0.114 * text.get_blue() > 0.5;
    if (std::exchange(isDark, isLight) == isLight)
        return;
    view.SetDark(isDark);
    Refresh();
    onDark.emit(isDark);
}

void Chart::Works::ListenToPointer() {
    const auto motion = Gtk::EventControllerMotion::create();
    motion->signal_motion().connect([this](double x, double y) {
        const CPoint point = PointOf(x, y);
        const bool hasMoved = !m_pointer || !(*m_pointer == point); // GTK tells of a resting one with each frame
        m_pointer = point;
        if (hasMoved && view.HoverAt(point))
            Repaint();
    });
    motion->signal_leave().connect([this] {
        m_pointer.reset();
        if (view.EndHover())
            Repaint();
    });
    m_chart.add_controller(motion);

    const auto click = Gtk::GestureClick::create();
    click->set_button(GDK_BUTTON_PRIMARY);
    click->signal_pressed().connect([this](int, double, double) { m_chart.grab_focus(); });
    click->signal_released().connect([this](int, double x, double y) { Click(view.DayAt(PointOf(x, y))); });
    m_chart.add_controller(click);

    const auto menu = Gtk::GestureClick::create();
    menu->set_button(GDK_BUTTON_SECONDARY);
    menu->signal_pressed().connect([this, watched = menu.get()](int, double x, double y) {
        watched->set_state(Gtk::EventSequenceState::CLAIMED);
        OpenMenu(PointOf(x, y));
    });
    m_chart.add_controller(menu);

    const auto press = Gtk::GestureLongPress::create();
    press->set_touch_only();
    press->signal_pressed().connect([this](double x, double y) { OpenMenu(PointOf(x, y)); });
    m_chart.add_controller(press);
}

void Chart::Works::ListenToKeys() {
    const auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect([this](guint key, guint, Gdk::ModifierType state) { return IsKey(key, state); },
                                       false);
    m_chart.add_controller(keys);
    const auto focus = Gtk::EventControllerFocus::create();
    focus->property_contains_focus().signal_changed().connect([this, watched = focus.get()] {
        if (!watched->contains_focus() && view.StopWalking()) {
            m_table.Unfocus();
            Repaint();
        }
    });
    m_chart.add_controller(focus);
}

bool Chart::Works::IsKey(guint key, Gdk::ModifierType state) {
    if (IsMenu(key, state)) {
        const CRect ring = view.Ring();
        OpenMenu(ring.right > ring.left ? CPoint(ring.left, ring.bottom) : CPoint(0, 0));
        return true;
    }
    if (IsShortcut(state))
        return false;
    if (const auto stride = StrideOf(key))
        return WalkOn(*stride);
    if (!view.Current())
        return false;
    if (IsClick(key))
        Click(static_cast<long>(*view.Current()));
    else if (key == GDK_KEY_Escape)
        EndWalk();
    else
        return false;
    return true;
}

bool Chart::Works::WalkOn(Stride stride) {
    if (!view.Walk(stride))
        return false;
    m_table.Focus(*view.Current());
    Repaint();
    return true;
}

void Chart::Works::EndWalk() {
    view.StopWalking();
    m_chart.grab_focus();
    m_table.Unfocus();
    Repaint();
}

void Chart::Works::Click(long day) {
    if (day >= 0)
        onDay.emit(day);
}

void Chart::Works::AddActions() {
    const auto actions = Gio::SimpleActionGroup::create();
    actions->add_action("copy", [this] { Copy(); });
    actions->add_action("png", [this] { AskForFile("png"); });
    actions->add_action("svg", [this] { AskForFile("svg"); });
    actions->add_action("pdf", [this] { AskForFile("pdf"); });
    actions->add_action("print", [this] { Print(); });
    m_chart.insert_action_group("chart", actions);
}

void Chart::Works::SetWords(const ChartMenuWords& said) {
    words = said;
    const auto menu = Gio::Menu::create();
    menu->append(words.copy, "chart.copy");
    menu->append(words.savePng, "chart.png");
    menu->append(words.saveSvg, "chart.svg");
    menu->append(words.savePdf, "chart.pdf");
    menu->append(words.print, "chart.print");
    m_menu.set_menu_model(menu);
}

void Chart::Works::OpenMenu(CPoint point) {
    if (!view.HasPicture())
        return;
    m_menu.set_pointing_to(Gdk::Rectangle(point.x, point.y, 1, 1));
    m_menu.popup();
}

void Chart::Works::Copy() {
    if (!view.HasPicture())
        return;
    view.EndHover();
    m_chart.get_clipboard()->set_texture(CopiedTexture(view.Pixels().view));
    Repaint();
}

void Chart::Works::AskForFile(const char* suffix) {
    Gtk::Window* const window = Window();
    if (!window)
        return;
    m_chooser = Gtk::FileChooserNative::create("", *window, Gtk::FileChooser::Action::SAVE);
    m_chooser->set_modal();
    m_chooser->set_current_name(std::string("chart.") + suffix);
    m_chooser->signal_response().connect([this](int response) {
        if (response != Gtk::ResponseType::ACCEPT)
            return;
        if (const std::string reason = m_chart.Save(m_chooser->get_file()->get_path()); !reason.empty())
            Complain(reason);
    });
    m_chooser->show();
}

void Chart::Works::Complain(const std::string& reason) {
    if (!Window())
        return;
    m_complaint = std::make_unique<Gtk::MessageDialog>(*Window(), words.notSaved, false, Gtk::MessageType::ERROR,
                                                       Gtk::ButtonsType::CLOSE, true);
    m_complaint->set_secondary_text(reason);
    m_complaint->signal_response().connect([this](int) { m_complaint->hide(); });
    m_complaint->show();
}

void Chart::Works::SetUpPrint(Gtk::PrintOperation& print) {
    print.set_n_pages(1);
    print.signal_draw_page().connect([this](const Glib::RefPtr<Gtk::PrintContext>& page, int) {
        const int width = m_chart.get_width();
        const int height = m_chart.get_height();
        if (width <= 0 || height <= 0)
            return;
        const auto context = page->get_cairo_context();
        const double scale = std::min(page->get_width() / width, page->get_height() / height);
        context->scale(scale, scale);
        HDC sheet = CreateContextSurface(context->cobj(), width, height);
        view.DrawOnPage(sheet);
        DeleteDC(sheet);
        Repaint();
    });
}

void Chart::Works::Print() {
    const auto print = Gtk::PrintOperation::create();
    SetUpPrint(*print);
    const auto setup = Gtk::PageSetup::create();
    if (m_chart.get_width() > m_chart.get_height())
        setup->set_orientation(Gtk::PageOrientation::LANDSCAPE);
    print->set_default_page_setup(setup);
    try {
        if (Window())
            print->run(Gtk::PrintOperation::Action::PRINT_DIALOG, *Window());
    } catch (const Glib::Error& error) {
        Complain(error.what());
    }
}

/// Styles tell a widget of their changes by its class alone.
ChartType::ChartType()
    : Glib::ExtraClassInit([](void* type, void*) {
          auto* const widget = static_cast<GtkWidgetClass*>(type);
          gtk_widget_class_set_css_name(widget, "melkarchart");
          gtk_widget_class_set_accessible_role(widget, GTK_ACCESSIBLE_ROLE_GROUP);
          widget->css_changed = [](GtkWidget* object, GtkCssStyleChange* change) {
              auto* const base = static_cast<GtkWidgetClass*>(g_type_class_peek(GTK_TYPE_WIDGET));
              base->css_changed(object, change);
              auto* const chart = dynamic_cast<Chart*>(Glib::wrap(object));
              if (chart && chart->m_works)
                  chart->m_works->JudgeDesktop();
          };
      }) {}

Chart::Chart(GraphMaker make, ChartLooks looks, std::string data)
    : Chart(PicturesOf(std::move(make)), std::move(looks), std::move(data)) {}

Chart::Chart(PictureMaker make, ChartLooks looks, std::string data)
    : Glib::ObjectBase("MelkarChart"),
      m_works(std::make_unique<Works>(*this, std::move(make), std::move(looks), std::move(data))) {}

/// Children leave while it is whole, and styles that change by that find it gone.
Chart::~Chart() { const auto works = std::move(m_works); }

void Chart::SetLooks(ChartLooks looks) {
    m_works->view.SetLooks(std::move(looks));
    m_works->Refresh();
}

void Chart::SetDarkLooks(ChartLooks looks) {
    m_works->view.SetDarkLooks(std::move(looks));
    m_works->Refresh();
}

void Chart::SetData(std::string path) {
    m_works->view.SetData(std::move(path));
    m_works->Refresh();
}

void Chart::Reload() {
    m_works->view.Remake();
    m_works->Refresh();
}

void Chart::Redraw() {
    m_works->view.Redraw();
    m_works->Refresh();
}

void Chart::SetMenuWords(const ChartMenuWords& words) { m_works->SetWords(words); }

void Chart::SetNaturalSize(int width, int height) {
    m_works->naturalWidth = std::max(width, kLeastWidth);
    m_works->naturalHeight = std::max(height, kLeastHeight);
    queue_resize();
}

long Chart::Result() const { return m_works->view.Result(); }
bool Chart::IsDark() const { return m_works->isDark; }
const std::vector<Contents>& Chart::Shown() const { return m_works->view.Shown(); }
ChartPicture* Chart::Picture() const { return m_works->view.Picture(); }
void Chart::Copy() { m_works->Copy(); }

std::string Chart::Save(const std::string& path) {
    std::string reason = m_works->view.Save(path);
    m_works->Repaint();
    return reason;
}

void Chart::SetUpPrint(Gtk::PrintOperation& print) { m_works->SetUpPrint(print); }
void Chart::Print() { m_works->Print(); }
sigc::signal<void(long)>& Chart::signal_day() { return m_works->onDay; }
sigc::signal<void(bool)>& Chart::signal_dark_changed() { return m_works->onDark; }
sigc::signal<void(long)>& Chart::signal_drawn() { return m_works->onDrawn; }

Gtk::SizeRequestMode Chart::get_request_mode_vfunc() const { return Gtk::SizeRequestMode::CONSTANT_SIZE; }

void Chart::measure_vfunc(Gtk::Orientation orientation, int, int& minimum, int& natural, int& minimumBaseline,
                          int& naturalBaseline) const {
    const bool isAcross = orientation == Gtk::Orientation::HORIZONTAL;
    minimum = isAcross ? kLeastWidth : kLeastHeight;
    natural = isAcross ? m_works->naturalWidth : m_works->naturalHeight;
    minimumBaseline = naturalBaseline = -1;
}

void Chart::size_allocate_vfunc(int width, int height, int) { m_works->Place(width, height); }
void Chart::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) { m_works->Paint(*snapshot); }

bool Chart::on_query_tooltip(int x, int y, bool keyboard, const Glib::RefPtr<Gtk::Tooltip>& tooltip) {
    const std::string tip = keyboard ? "" : m_works->view.TipAt({x, y});
    tooltip->set_text(tip);
    return !tip.empty();
}

} // namespace melkar::gtk4
