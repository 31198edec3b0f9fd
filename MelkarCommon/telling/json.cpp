#include <MelkarCommon/telling/json.h>

#include <MelkarCommon/telling/numbers.h>

#include <array>
#include <cstdio>
#include <string_view>

namespace melkar {

namespace {

/// Objects and lists inside each other, a member a line; what is short stays in one.
class JsonText {
public:
    void Begin(char bracket) {
        m_text += bracket;
        ++m_depth;
        m_isFirst = true;
    }
    void End(char bracket) {
        --m_depth;
        if (!m_isFirst)
            BreakLine();
        m_isFirst = false;
        m_text += bracket;
    }
    void Next() {
        m_text += m_isFirst ? "" : ",";
        m_isFirst = false;
        BreakLine();
    }
    void Member(std::string_view name) {
        Next();
        Text(name);
        m_text += ": ";
    }
    void Raw(std::string_view words) { m_text += words; }
    void Text(std::string_view utf8) {
        m_text += '"';
        for (const char letter : utf8)
            Character(letter);
        m_text += '"';
    }
    void Member(std::string_view name, std::string_view text) {
        Member(name);
        Text(text);
    }
    void Member(std::string_view name, double value) {
        Member(name);
        Raw(NumberText(value));
    }
    void Truth(std::string_view name, bool value) {
        Member(name);
        Raw(value ? "true" : "false");
    }
    template <class List, class Write> void Listed(std::string_view name, const List& list, Write write) {
        Member(name);
        Begin('[');
        for (const auto& one : list) {
            Next();
            write(one);
        }
        End(']');
    }

    std::string Take() { return std::move(m_text) + "\n"; }

private:
    static constexpr int kIndent = 2;

    void BreakLine() { m_text.append("\n").append(static_cast<std::size_t>(m_depth * kIndent), ' '); }
    void Character(char letter) {
        constexpr unsigned char kFirstPlain = 0x20;
        if (letter == '"' || letter == '\\') {
            m_text.append("\\").append(1, letter);
        } else if (letter == '\n') {
            m_text += "\\n";
        } else if (static_cast<unsigned char>(letter) < kFirstPlain) {
            std::array<char, 8> code{};
            std::snprintf(code.data(), code.size(), "\\u%04x", static_cast<unsigned>(letter));
            m_text += code.data();
        } else {
            m_text += letter;
        }
    }

    std::string m_text;
    int m_depth = 0;
    bool m_isFirst = true;
};

const char* NameOfSide(AxisSide side) {
    switch (side) {
    case AxisSide::Left:
        return "left";
    case AxisSide::Right:
        return "right";
    case AxisSide::Bottom:
        return "bottom";
    }
    return "";
}

const char* NameOfKind(MarkKind kind) {
    switch (kind) {
    case MarkKind::Target:
        return "target";
    case MarkKind::Average:
        return "average";
    case MarkKind::Event:
        return "event";
    case MarkKind::Border:
        return "border";
    }
    return "";
}

/// `COLORREF` has red in its low byte.
std::string HexOf(COLORREF color) {
    constexpr unsigned kByte = 0xFF;
    std::array<char, 8> hex{};
    std::snprintf(hex.data(), hex.size(), "#%02X%02X%02X", static_cast<unsigned>(color) & kByte,
                  static_cast<unsigned>(color >> 8) & kByte, static_cast<unsigned>(color >> 16) & kByte);
    return hex.data();
}

void Write(JsonText& json, const CRect& area) {
    json.Member("area");
    json.Raw("{\"left\": " + std::to_string(area.left) + ", \"top\": " + std::to_string(area.top) +
             ", \"right\": " + std::to_string(area.right) + ", \"bottom\": " + std::to_string(area.bottom) + "}");
}

void Write(JsonText& json, const ShownAxis& axis) {
    json.Begin('{');
    json.Member("side", NameOfSide(axis.side));
    json.Member("label", axis.label);
    json.Member("from", axis.from);
    json.Member("to", axis.to);
    json.Member("step", axis.step);
    json.End('}');
}

void Write(JsonText& json, const ShownSeries& series) {
    json.Begin('{');
    json.Member("name", series.name);
    json.Member("color", HexOf(series.color));
    json.Member("axis", NameOfSide(series.axis));
    json.End('}');
}

void Write(JsonText& json, const ShownFigure& figure) {
    json.Begin('{');
    json.Member("series", figure.series);
    json.Member("text", figure.text);
    json.Member("value", figure.value);
    json.Truth("clipped", figure.isClipped);
    json.Member("balloon", figure.balloon);
    Write(json, figure.area);
    json.End('}');
}

void Write(JsonText& json, const ShownItem& item) {
    json.Begin('{');
    json.Member("caption", item.caption);
    json.Member("text", item.text);
    json.Member("value", item.value);
    json.Member("status", static_cast<double>(item.status));
    json.Truth("missing", item.isMissing);
    json.Member("reached");
    json.Raw(!item.reached ? "null" : *item.reached ? "true" : "false");
    json.Listed("figures", item.figures, [&](const ShownFigure& figure) { Write(json, figure); });
    Write(json, item.area);
    json.End('}');
}

void Write(JsonText& json, const ShownMark& mark) {
    json.Begin('{');
    json.Member("kind", NameOfKind(mark.kind));
    json.Member("label", mark.label);
    json.Member("text", mark.text);
    json.Member("value", mark.value);
    Write(json, mark.area);
    json.End('}');
}

void Write(JsonText& json, const Contents& contents) {
    const auto write = [&](const auto& one) { Write(json, one); };
    const auto text = [&](const std::string& one) { json.Text(one); };
    json.Begin('{');
    json.Member("kind", contents.kind);
    json.Member("title", contents.title);
    json.Member("unit", contents.unit);
    json.Member("whole", contents.whole);
    Write(json, contents.area);
    json.Listed("axes", contents.axes, write);
    json.Listed("series", contents.series, write);
    json.Listed("items", contents.items, write);
    json.Listed("marks", contents.marks, write);
    json.Listed("texts", contents.texts, text);
    json.Listed("messages", contents.messages, text);
    json.End('}');
}

void Write(JsonText& json, const ShownPage& page) {
    json.Begin('{');
    json.Member("name", page.name);
    json.Member("heading");
    Write(json, page.heading);
    json.Listed("texts", page.texts, [&](const std::string& text) { json.Text(text); });
    json.Listed("pictures", page.pictures, [&](const Contents& picture) { Write(json, picture); });
    json.End('}');
}

} // namespace

std::string JsonOf(const Contents& contents) {
    JsonText json;
    Write(json, contents);
    return json.Take();
}

std::string JsonOf(const std::string& kind, const std::vector<Contents>& parts) {
    JsonText json;
    json.Begin('{');
    json.Member("kind", kind);
    json.Listed("parts", parts, [&](const Contents& part) { Write(json, part); });
    json.End('}');
    return json.Take();
}

std::string JsonOf(const ShownReport& report) {
    JsonText json;
    json.Begin('{');
    json.Member("kind", "report");
    json.Member("title", report.title);
    json.Listed("pages", report.pages, [&](const ShownPage& page) { Write(json, page); });
    json.End('}');
    return json.Take();
}

} // namespace melkar
