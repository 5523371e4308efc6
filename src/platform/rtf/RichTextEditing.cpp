#include <utility>

#include "platform/Text.h"
#include "platform/rtf/RichText.h"

namespace larder {

namespace {

// Maps the format indexes of one document to those of another, carrying over what is used.
class FormatMap {
  public:
    using Index = RichText::FormatIndex;

    FormatMap(const RichText& from, RichText& to)
        : from_(from),
          to_(to),
          chars_(from.CharFormats().size(), kUnknown),
          paras_(from.ParaFormats().size(), kUnknown) {}

    Index Char(Index index) {
        if (chars_[index] == kUnknown) {
            CharFormat format = from_.CharFormats()[index];
            format.font = to_.InternFont(from_.Fonts()[format.font]);
            chars_[index] = to_.Intern(format);
        }
        return chars_[index];
    }
    Index Para(Index index) {
        if (paras_[index] == kUnknown) paras_[index] = to_.Intern(from_.ParaFormats()[index]);
        return paras_[index];
    }

  private:
    static constexpr Index kUnknown = 0xFFFFFFFF;
    const RichText& from_;
    RichText& to_;
    std::vector<Index> chars_;
    std::vector<Index> paras_;
};

void AddOnce(std::vector<RichText::FormatIndex>& list, RichText::FormatIndex index) {
    if (std::find(list.begin(), list.end(), index) == list.end()) list.push_back(index);
}

template <typename Field>
void Lay(Field& field, const std::optional<Field>& change) {
    if (change) field = *change;
}

CharFormat Changed(CharFormat format, const CharChange& change) {
    Lay(format.halfPoints, change.halfPoints);
    Lay(format.colour, change.colour);
    Lay(format.highlight, change.highlight);
    Lay(format.bold, change.bold);
    Lay(format.italic, change.italic);
    Lay(format.underline, change.underline);
    Lay(format.strike, change.strike);
    Lay(format.script, change.script);
    return format;
}

ParaFormat Changed(ParaFormat format, const ParaChange& change) {
    Lay(format.alignment, change.alignment);
    Lay(format.left, change.left);
    Lay(format.right, change.right);
    Lay(format.firstLine, change.firstLine);
    Lay(format.spaceBefore, change.spaceBefore);
    Lay(format.spaceAfter, change.spaceAfter);
    Lay(format.tabs, change.tabs);
    return format;
}

}  // namespace

std::size_t RichText::UnitAt(std::size_t position) const {
    return UnitFor(position, 0);
}

// A position between CR and LF yields the unit of the break, or one `past` it.
std::size_t RichText::UnitFor(std::size_t position, std::size_t past) const {
    std::size_t unit = 0;
    std::size_t left = position;
    for (const Paragraph& paragraph : paragraphs_) {
        if (left <= paragraph.length) return unit + left;
        if (&paragraph == &paragraphs_.back()) break;
        if (left == paragraph.length + std::size_t{1}) return unit + paragraph.length + past;
        unit += paragraph.length + std::size_t{1};
        left -= paragraph.length + std::size_t{2};
    }
    return units_.size();
}

std::size_t RichText::PositionAt(std::size_t unit) const {
    const auto end = units_.begin() + static_cast<std::ptrdiff_t>(std::min(unit, units_.size()));
    const auto breaks = std::count(units_.begin(), end, kBreakUnit);
    return static_cast<std::size_t>(end - units_.begin() + breaks);
}

RichText::UnitRange RichText::UnitsOf(std::size_t from, std::size_t to) const {
    if (to <= from) return {UnitAt(from), UnitAt(from)};
    return {UnitAt(from), UnitFor(to, 1)};
}

// Appends a range of another document, which may not be this one.
void RichText::AppendRange(const RichText& from, UnitRange range) {
    FormatMap map(from, *this);
    std::size_t run = 0;
    std::size_t runEnd = 0;  // unit behind the run
    const auto formatAt = [&](std::size_t unit) {
        while (run < from.runs_.size() && unit >= runEnd + from.runs_[run].length) {
            runEnd += from.runs_[run++].length;
        }
        return from.runs_[run].format;
    };
    std::size_t start = 0;
    for (std::size_t p = 0; p < from.paragraphs_.size() && start <= range.to; ++p) {
        const Paragraph& paragraph = from.paragraphs_[p];
        const std::size_t end = start + paragraph.length;
        if (end >= range.from) {
            std::size_t unit = std::max(start, range.from);
            const std::size_t stop = std::min(end, range.to);
            SetParagraphFormat(map.Para(paragraph.format));
            while (unit < stop) {
                const FormatIndex format = map.Char(formatAt(unit));
                if (const std::int32_t picture = from.runs_[run].picture; picture >= 0) {
                    AppendPicture(from.pictures_[static_cast<std::size_t>(picture)], format);
                    ++unit;
                    continue;
                }
                const std::size_t next = std::min(stop, runEnd + from.runs_[run].length);
                Append(std::u16string_view(from.units_).substr(unit, next - unit), format);
                unit = next;
            }
            if (end < range.to) AppendBreak(paragraph.end, map.Char(formatAt(end)));
        }
        start = end + 1;
    }
}

RichText RichText::Cut(std::size_t from, std::size_t to) const {
    const UnitRange range = UnitsOf(from, to);
    RichText part(fonts_[0]);
    part.AppendRange(*this, range);
    FormatMap map(*this, part);
    part.SetEndFormat(map.Char(range.to == units_.size() ? endFormat_ : InsertionFormat(range.to)));
    return part;
}

std::size_t RichText::Replace(std::size_t from, std::size_t to, const RichText& with) {
    if (&with == this) return Replace(from, to, RichText(with));
    const UnitRange range = UnitsOf(from, to);
    const RichText old = std::move(*this);
    *this = RichText(old.fonts_[0]);
    fonts_ = old.fonts_;
    charFormats_ = old.charFormats_;
    paraFormats_ = old.paraFormats_;
    charIndex_ = old.charIndex_;
    paraIndex_ = old.paraIndex_;
    units_.reserve(old.units_.size() + with.units_.size());

    AppendRange(old, {0, range.from});
    const bool atStart = paragraphs_.back().length == 0;
    AppendRange(with, {0, with.units_.size()});
    const std::size_t unit = units_.size();
    const bool bringsLayout = atStart && paragraphs_.back().length > 0 &&
                              (range.to == old.units_.size() || old.units_[range.to] == kBreakUnit);
    const FormatIndex layout = paragraphs_.back().format;
    const std::size_t joined = paragraphs_.size() - 1;
    AppendRange(old, {range.to, old.units_.size()});
    if (bringsLayout) paragraphs_[joined].format = layout;
    LayLines();

    const bool endsWithNew = range.to == old.units_.size() && !with.units_.empty();
    endFormat_ = endsWithNew ? FormatMap(with, *this).Char(with.endFormat_) : old.endFormat_;
    return PositionAt(unit);
}

void RichText::LayLines() {
    for (std::size_t p = paragraphs_.size() - 1; p-- > 0;) {
        if (paragraphs_[p].end == BreakKind::Line)
            paragraphs_[p].format = paragraphs_[p + 1].format;
    }
}

std::size_t RichText::ReplaceText(std::size_t from, std::size_t to, std::string_view with) {
    const UnitRange range = UnitsOf(from, to);
    const CharFormat format = charFormats_[range.from < range.to ? FormatsIn(from, to).front()
                                                                 : InsertionFormat(range.from)];
    CharFormat own = format;
    own.font = 0;
    RichText plain = FromPlain(with, own, fonts_[format.font]);
    const std::size_t paragraph = ParagraphsOf({range.from, range.from}).front();
    const FormatIndex layout = plain.Intern(paraFormats_[paragraphs_[paragraph].format]);
    for (Paragraph& p : plain.paragraphs_)
        p.format = layout;
    return Replace(from, to, plain);
}

void RichText::Change(std::size_t from, std::size_t to, const CharChange& change) {
    const UnitRange range = UnitsOf(from, to);
    const auto changed = [&](FormatIndex index) {
        CharFormat format = Changed(charFormats_[index], change);
        if (change.font) format.font = InternFont(*change.font);
        return Intern(format);
    };
    std::vector<Run> runs;
    runs.swap(runs_);
    std::size_t start = 0;
    for (const Run& run : runs) {
        const std::size_t end = start + run.length;
        const std::size_t first = std::clamp(range.from, start, end);
        const std::size_t last = std::clamp(range.to, first, end);
        if (run.picture >= 0) {
            runs_.push_back({1, last > first ? changed(run.format) : run.format, run.picture});
        } else {
            AppendRun(static_cast<std::uint32_t>(first - start), run.format);
            if (last > first) {
                AppendRun(static_cast<std::uint32_t>(last - first), changed(run.format));
            }
            AppendRun(static_cast<std::uint32_t>(end - last), run.format);
        }
        start = end;
    }
    if (range.to == units_.size() && (range.from < range.to || units_.empty())) {
        endFormat_ = changed(endFormat_);
    }
}

void RichText::ChangeParagraphs(std::size_t from, std::size_t to, const ParaChange& change) {
    for (const std::size_t paragraph : ParagraphsOf(UnitsOf(from, to))) {
        FormatIndex& format = paragraphs_[paragraph].format;
        format = Intern(Changed(paraFormats_[format], change));
    }
}

// Those that the range touches, with all lines that line breaks divide them into. An end behind a
// break leaves the paragraph that begins there alone.
std::vector<std::size_t> RichText::ParagraphsOf(UnitRange range) const {
    std::vector<std::size_t> found;
    std::size_t first = 0;  // line of the paragraph
    std::size_t from = 0;   // its first unit
    std::size_t start = 0;
    for (std::size_t p = 0; p < paragraphs_.size(); ++p) {
        const std::size_t end = start + paragraphs_[p].length;
        start = end + 1;
        const bool goesOn = paragraphs_[p].end == BreakKind::Line && p + 1 < paragraphs_.size();
        if (goesOn) continue;
        const bool touched = end >= range.from && (from < range.to || from == range.from);
        for (; first <= p; ++first) {
            if (touched) found.push_back(first);
        }
        from = start;
    }
    return found;
}

RichText::FormatIndex RichText::InsertionFormat(std::size_t unit) const {
    const bool behindText = unit > 0 && units_[unit - 1] != kBreakUnit;
    if (!behindText && unit == units_.size()) return endFormat_;
    std::size_t end = 0;
    const std::size_t wanted = behindText ? unit - 1 : unit;
    for (const Run& run : runs_) {
        end += run.length;
        if (wanted < end) return run.format;
    }
    return endFormat_;
}

std::vector<RichText::FormatIndex> RichText::FormatsIn(std::size_t from, std::size_t to) const {
    const UnitRange range = UnitsOf(from, to);
    if (range.from >= range.to) return {InsertionFormat(range.from)};
    std::vector<FormatIndex> formats;
    std::size_t start = 0;
    for (const Run& run : runs_) {
        const std::size_t end = start + run.length;
        if (end > range.from && start < range.to) AddOnce(formats, run.format);
        start = end;
    }
    return formats;
}

std::vector<RichText::FormatIndex> RichText::ParaFormatsIn(std::size_t from, std::size_t to) const {
    std::vector<FormatIndex> formats;
    for (const std::size_t p : ParagraphsOf(UnitsOf(from, to))) {
        AddOnce(formats, paragraphs_[p].format);
    }
    return formats;
}

}  // namespace larder
