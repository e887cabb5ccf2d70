#include "screens/qt/theme.h"

#include <cmath>

#include <QApplication>
#include <QStyle>

#include "screens/qt/style.h"

namespace zentrel::view {

namespace {

QColor Mix(const QColor& a, const QColor& b, double part) {
    const auto mix = [part](int x, int y) {
        return static_cast<int>(std::lround(x + (y - x) * part));
    };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

/// A meaning colour in its four shades.
struct Shades {
    Color meaning;
    QRgb lightFill, darkFill, lightInk, darkInk;
};

constexpr Shades kShades[] = {
    {colors::kRed, 0xFFF4A6A0, 0xFF8E2B2B, 0xFFC62828, 0xFFFF7B72},
    {colors::kYellow, 0xFFFFE68A, 0xFF7A6116, 0xFFC79A00, 0xFFE8C547},
    {colors::kBlue, 0xFFAFCBFA, 0xFF274C8F, 0xFF1A5FD0, 0xFF6CA6FF},
    {colors::kGreen, 0xFFA9DDB0, 0xFF23613A, 0xFF1E9A44, 0xFF4CC26E},
    {colors::kCyan, 0xFFA5E3EA, 0xFF13626C, 0xFF0A97A8, 0xFF35C5D6},
    {colors::kMagenta, 0xFFEDB4E6, 0xFF772B70, 0xFFB727A6, 0xFFE673D8},
    {colors::kOutOfPath, 0xFFE3E3E4, 0xFF55585E, 0xFF8A8D93, 0xFF9A9DA3},
    {colors::kUnassigned, 0xFFC3C6CB, 0xFF4A4E55, 0xFFA6AAB1, 0xFF6A6F78},
};

const Shades* Find(Color meaning) {
    for (const Shades& s : kShades)
        if (s.meaning == meaning) return &s;
    return nullptr;
}

bool IsSystemColor(Color c) {
    return (c & 0x80000000U) != 0;
}

QColor Plain(Color c) {
    return {static_cast<int>(c & 0xFF), static_cast<int>((c >> 8) & 0xFF),
            static_cast<int>((c >> 16) & 0xFF)};
}

} // namespace

Theme::Theme(const QPalette& p) : dark(p.color(QPalette::Window).lightness() < 128) {
    const QColor base = p.color(QPalette::Base);
    window = p.color(QPalette::Window);
    text = p.color(QPalette::WindowText);
    surface = dark ? Mix(window, text, 0.035) : Mix(base, window, 0.05);
    field = dark ? Mix(base, window, 0.15) : base;
    accent = p.color(QPalette::Highlight);
    onAccent = p.color(QPalette::HighlightedText);
    block = Mix(surface, accent, dark ? 0.08 : 0.07);
    line = Mix(surface, text, dark ? 0.20 : 0.19);
    signal = Mix(surface, text, dark ? 0.62 : 0.66);
    muted = Mix(surface, text, dark ? 0.62 : 0.60);
    disabled = Mix(surface, text, dark ? 0.38 : 0.40);
}

const Theme& Theme::Now() {
    static qint64 key = -1;
    static Theme theme{QPalette{}};
    const QPalette palette = QApplication::palette();
    if (palette.cacheKey() != key) {
        key = palette.cacheKey();
        theme = Theme(palette);
    }
    return theme;
}

QColor Theme::Fill(Color meaning) const {
    if (meaning == colors::kWhite || IsSystemColor(meaning)) return field;
    if (const Shades* s = Find(meaning)) return QColor(dark ? s->darkFill : s->lightFill);
    return dark ? Mix(Plain(meaning), window, 0.35) : Plain(meaning);
}

QColor Theme::InkOn(Color meaning) const {
    const QColor fill = Fill(meaning);
    if (fill == field) return text;
    return fill.lightness() < 128 ? QColor(0xF4, 0xF5, 0xF7) : QColor(0x1B, 0x1D, 0x21);
}

QColor Theme::Ink(Color meaning) const {
    if (IsSystemColor(meaning)) return text;
    if (meaning == colors::kBlack)
        return dark ? QColor(0x05, 0x06, 0x08) : QColor(0x16, 0x18, 0x1C);
    if (meaning == colors::kWhite) return field;
    if (const Shades* s = Find(meaning)) return QColor(dark ? s->darkInk : s->lightInk);
    return Plain(meaning);
}

Meaning Theme::MeaningOf(Color backColor) {
    switch (backColor) {
    case colors::kRed:
        return Meaning::Error;
    case colors::kYellow:
        return Meaning::Warning;
    case colors::kOutOfPath:
        return Meaning::OutOfPath;
    default:
        return Meaning::None;
    }
}

QPalette PaletteNamed(const QString& name) {
    const bool dark = name == QLatin1String("dark");
    if (!dark && name != QLatin1String("light")) return QApplication::palette();
    struct Role {
        QPalette::ColorRole role;
        QRgb light, dark;
    };
    static constexpr Role kRoles[] = {
        {QPalette::Window, 0xFFF3F4F6, 0xFF1A1D21},
        {QPalette::WindowText, 0xFF1F2328, 0xFFE6E8EB},
        {QPalette::Base, 0xFFFFFFFF, 0xFF15181C},
        {QPalette::AlternateBase, 0xFFF7F8FA, 0xFF1E2226},
        {QPalette::ToolTipBase, 0xFFFFFFFF, 0xFF2B3036},
        {QPalette::ToolTipText, 0xFF1F2328, 0xFFE6E8EB},
        {QPalette::PlaceholderText, 0xFF8B929C, 0xFF7D848E},
        {QPalette::Text, 0xFF1F2328, 0xFFE6E8EB},
        {QPalette::Button, 0xFFFBFBFC, 0xFF2A2F36},
        {QPalette::ButtonText, 0xFF1F2328, 0xFFE6E8EB},
        {QPalette::BrightText, 0xFFFFFFFF, 0xFFFFFFFF},
        {QPalette::Link, 0xFF1A66D6, 0xFF6FA8FF},
        {QPalette::Highlight, 0xFF1A66D6, 0xFF6AA5FF},
        {QPalette::HighlightedText, 0xFFFFFFFF, 0xFF0E1116},
    };
    QPalette p;
    for (const Role& r : kRoles)
        p.setColor(r.role, QColor(dark ? r.dark : r.light));
    const QColor faint(dark ? 0xFF6A717A : 0xFFA0A6AF);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, faint);
    p.setColor(QPalette::Disabled, QPalette::Highlight, faint);
    const QColor shade(dark ? 0xFF0C0E11 : 0xFFB9BEC6);
    p.setColor(QPalette::Mid, shade);
    p.setColor(QPalette::Dark, QColor(dark ? 0xFF08090B : 0xFF9AA0A9));
    p.setColor(QPalette::Light, QColor(dark ? 0xFF363C44 : 0xFFFFFFFF));
    p.setColor(QPalette::Midlight, QColor(dark ? 0xFF2F353C : 0xFFEDEFF2));
    p.setColor(QPalette::Shadow, QColor(0xFF000000));
    return p;
}

void DressApplication(const QString& name) {
    QApplication::setStyle(new FlatStyle);
    QApplication::setCursorFlashTime(0); // Nothing blinks.
    QString wanted = name;
    const QPalette desktop = QApplication::palette();
    if (wanted != QLatin1String("light") && wanted != QLatin1String("dark") &&
        desktop.color(QPalette::Window) ==
            QApplication::style()->standardPalette().color(QPalette::Window))
        wanted = desktop.color(QPalette::Window).lightness() < 128 ? QStringLiteral("dark")
                                                                   : QStringLiteral("light");
    const QPalette palette = PaletteNamed(wanted);
    if (palette != desktop) QApplication::setPalette(palette);
}

} // namespace zentrel::view
