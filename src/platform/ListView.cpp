#include "platform/ListView.h"

#include <QAbstractItemDelegate>
#include <QAbstractTableModel>
#include <QAccessible>
#include <QFocusEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <QTreeView>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "platform/Failure.h"
#include "platform/Fonts.h"
#include "platform/Handlers.h"
#include "platform/Keys.h"
#include "platform/Native.h"
#include "platform/Painting.h"
#include "platform/Text.h"

namespace larder {

// The lines as a model, for the view's geometry and for assistive technology, to which the first
// column speaks the whole line.
class ListView::Model : public QAbstractTableModel {
  public:
    explicit Model(const ListView& list) : list_(list) {}

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : list_.Count();
    }
    int columnCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : list_.ColumnCount();
    }

    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid() || index.row() >= list_.Count()) return {};
        const ListItem& item = list_.Item(index.row() + 1);
        if (role == Qt::AccessibleTextRole && index.column() == 0) return WholeLine(item);
        if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole) return {};
        return NativeText(index.column() == 0 ? item.Text() : item.SubItems(index.column()));
    }

    void InsertLast() {
        const int row = list_.Count();
        beginInsertRows({}, row, row);
    }
    void Inserted() { endInsertRows(); }
    void Remove(int row) { beginRemoveRows({}, row, row); }
    void Removed() { endRemoveRows(); }
    void Reset() { beginResetModel(); }
    void WasReset() { endResetModel(); }
    void AllChanged() {
        if (list_.Count() == 0) return;
        emit dataChanged(index(0, 0), index(list_.Count() - 1, list_.ColumnCount() - 1));
    }

  private:
    QString WholeLine(const ListItem& item) const {
        QString line = NativeText(TrimBlanks(item.Text()));
        for (int column = 1; column < list_.ColumnCount(); ++column) {
            const std::string& cell = item.SubItems(column);
            if (cell.empty()) continue;
            if (!line.isEmpty()) line += QLatin1Char(' ');
            line += NativeText(cell);
        }
        return line;
    }

    const ListView& list_;
};

// The view asks it for nothing but the height of a line; the lines are drawn as a whole.
class ListView::Delegate : public QAbstractItemDelegate {
  public:
    using QAbstractItemDelegate::QAbstractItemDelegate;
    void paint(QPainter*, const QStyleOptionViewItem&, const QModelIndex&) const override {}
    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
        return QSize(1, Height);
    }
    int Height = 1;
};

class ListView::Widget : public QTreeView {
  public:
    Widget(QWidget* parent, ListView& list)
        : QTreeView(parent), Lines(list), Row(this), list_(list) {
        setItemDelegate(&Row);
        setHeaderHidden(true);
        header()->setStretchLastSection(false);
        header()->setMinimumSectionSize(0);
        setRootIsDecorated(false);
        setItemsExpandable(false);
        setIndentation(0);
        setUniformRowHeights(true);
        setFrameShape(QFrame::NoFrame);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setSelectionMode(SingleSelection);
        setSelectionBehavior(SelectRows);
        setEditTriggers(NoEditTriggers);
        setAutoScroll(false);
        // A press gives the focus by itself, behind its handler.
        setFocusPolicy(Qt::TabFocus);
        viewport()->setAutoFillBackground(false);
        viewport()->setMouseTracking(true);
    }

    // The list is made behind its widget, and until then the model cannot be asked for anything.
    void TakeModel() { setModel(&Lines); }

    int RowPixels() const { return Row.Height; }

    void TakeFont(const Font& font) {
        setFont(NativeFont(font));
        Font bold = font;
        bold.Bold = true;
        bold_ = NativeFont(bold);
        const int height = fontMetrics().lineSpacing();
        Row.Height = height + std::max(4, height / 5);
        scheduleDelayedItemsLayout();
        viewport()->update();
    }

    // The view's current line is the selected one, so that a screen reader follows.
    void FollowSelection() {
        const ListItem* selected = list_.SelectedItem();
        const QModelIndex index =
            selected == nullptr ? QModelIndex() : Lines.index(selected->Index() - 1, 0);
        selectionModel()->setCurrentIndex(
            index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        viewport()->update();
    }

    void TellChange() {
        viewport()->update();
        if (!QAccessible::isActive() || std::exchange(changeWaits_, true)) return;
        QMetaObject::invokeMethod(
            this,
            [this] {
                changeWaits_ = false;
                Lines.AllChanged();
            },
            Qt::QueuedConnection);
    }

    void TakeColumns() {
        for (int column = 0; column < header()->count(); ++column) {
            header()->resizeSection(column, EdgeOf(column + 1) - EdgeOf(column));
        }
        viewport()->update();
    }

    Model Lines;
    Delegate Row;

  protected:
    void paintEvent(QPaintEvent* event) override;

    void scrollTo(const QModelIndex&, ScrollHint) override {}

    void mousePressEvent(QMouseEvent* event) override {
        pressedRow_ = RowAt(*event);
        Press(event);
    }

    void mouseDoubleClickEvent(QMouseEvent* event) override {
        const int row = RowAt(*event);
        if (std::exchange(pressedRow_, row) != row) Press(event);
    }

    void mouseMoveEvent(QMouseEvent* event) override { FireMouse(list_.OnMouseMove, *event); }
    void mouseReleaseEvent(QMouseEvent*) override {}

    void keyPressEvent(QKeyEvent* event) override {
        int code = KeyCodeOf(*event);
        if (code != key::None) Fire(list_.OnKeyDown, code, ShiftOf(*event));
        event->ignore();
    }

    void keyReleaseEvent(QKeyEvent* event) override {
        const int code = KeyCodeOf(*event);
        if (code != key::None && !event->isAutoRepeat()) {
            Fire(list_.OnKeyUp, code, ShiftOf(*event));
        }
        event->ignore();
    }

    void wheelEvent(QWheelEvent* event) override {
        event->accept();
        const double lines = LinesOf(*event);
        if (lines * wheelLines_ < 0) wheelLines_ = 0;  // the other way: a new beginning
        wheelLines_ += lines;
        const double whole = std::trunc(wheelLines_);
        wheelLines_ -= whole;
        if (whole != 0) Fire(list_.OnWheel, static_cast<int>(whole));
    }

    // Qt's own handler would make the first line the current one.
    void focusInEvent(QFocusEvent*) override {
        viewport()->update();
        if (!QAccessible::isActive() || !currentIndex().isValid()) return;
        QAccessibleEvent focus(this, QAccessible::Focus);
        focus.setChild(currentIndex().row() * list_.ColumnCount());
        QAccessible::updateAccessibility(&focus);
    }
    void focusOutEvent(QFocusEvent*) override { viewport()->update(); }

    bool viewportEvent(QEvent* event) override {
        if (event->type() != QEvent::ToolTip) return QTreeView::viewportEvent(event);
        const auto* help = static_cast<QHelpEvent*>(event);
        QToolTip::showText(help->globalPos(), toolTip(), this);
        return true;
    }

  private:
    static constexpr int CellPadding = 4;
    static constexpr double LinesPerNotch = 3;

    void Press(QMouseEvent* event) {
        const FocusEventsWait wait(list_);
        setFocus(Qt::MouseFocusReason);
        FireMouse(list_.OnMouseDown, *event);
    }

    int RowAt(const QMouseEvent& event) const {
        return static_cast<int>(event.position().y()) / Row.Height;
    }

    double LinesOf(const QWheelEvent& event) const {
        const bool byPixels = event.phase() != Qt::NoScrollPhase && !event.pixelDelta().isNull();
        if (byPixels) return -static_cast<double>(event.pixelDelta().y()) / Row.Height;
        return -event.angleDelta().y() * LinesPerNotch / 120.0;
    }

    // Left edge of a column from 0, in pixels.
    int EdgeOf(int column) const {
        float twips = 0;
        for (int i = 1; i <= column; ++i)
            twips += list_.ColumnWidth(i);
        return PixelOf(twips);
    }

    void PaintLine(QPainter& painter, const ListItem& item, const QRect& line) const;
    int PaintIcon(QPainter& painter, const ListItem& item, const QRect& cell) const;

    ListView& list_;
    QFont bold_;
    double wheelLines_ = 0;
    int pressedRow_ = -1;
    bool changeWaits_ = false;
};

void ListView::Widget::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const int first = std::max(0, event->rect().top() / Row.Height);
    const int last = std::min(list_.Count() - 1, event->rect().bottom() / Row.Height);
    for (int row = first; row <= last; ++row) {
        PaintLine(painter, list_.Item(row + 1),
                  QRect(0, row * Row.Height, viewport()->width(), Row.Height));
    }
}

void ListView::Widget::PaintLine(QPainter& painter, const ListItem& item, const QRect& line) const {
    const bool selected = item.Selected();
    const bool focused = selected && hasFocus();
    if (focused) {
        painter.fillRect(line, NativeColor(house::SlateBlue));
    } else if (selected && !list_.HideSelection()) {
        painter.fillRect(line, NativeColor(house::PaleBar));
    }
    painter.setFont(item.Bold() ? bold_ : font());
    const QFontMetrics metrics = painter.fontMetrics();
    for (int column = 0; column < list_.ColumnCount(); ++column) {
        QRect cell(QPoint(EdgeOf(column), line.top()),
                   QPoint(EdgeOf(column + 1) - 1, line.bottom()));
        cell.setRight(std::min(cell.right(), line.right()));
        if (column == 0) cell.setLeft(cell.left() + PaintIcon(painter, item, cell));
        const std::string& text = column == 0 ? item.Text() : item.SubItems(column);
        cell.adjust(CellPadding, 0, -CellPadding, 0);
        if (text.empty() || cell.width() <= 0) continue;
        const std::int32_t color = column == 0 ? item.ForeColor() : item.SubForeColor(column);
        painter.setPen(NativeColor(focused ? house::Paper : color));
        painter.drawText(
            cell, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
            metrics.elidedText(NativeText(Showable(text)), Qt::ElideRight, cell.width()));
    }
}

// Returns the room that it takes from the text; a list with icons keeps it on every line.
int ListView::Widget::PaintIcon(QPainter& painter, const ListItem& item, const QRect& cell) const {
    if (list_.icons_ == nullptr) return 0;
    const int side = std::min(Row.Height - 2, std::max(1, cell.width() - 2));
    const int most = fontMetrics().height();
    const int icon = std::min(side, most);
    const QRect place(cell.left() + 1, cell.top() + (cell.height() - icon) / 2, icon, icon);
    const Picture& picture = list_.icons_->Item(item.SmallIcon());
    if (item.Selected() && hasFocus()) {
        PaintSilhouette(painter, picture, place, NativeColor(house::Paper));
    } else {
        PaintPicture(painter, picture, place);
    }
    return icon + 1;
}

ListView::ListView(Container& container, const std::string& name, int index)
    : Control(container, name, index, new Widget(ParentFor(container), *this)) {
    Mine()->TakeModel();
    SetFont(font_);
}

// The lines go now, the view a little later: it must not ask for them any more.
ListView::~ListView() {
    if (Native() != nullptr) Mine()->setModel(nullptr);
}

ListView::Widget* ListView::Mine() const {
    return static_cast<Widget*>(Native());
}

ListItem& ListView::Item(int index) const {
    if (index < 1 || index > Count()) {
        throw Failure(failure::IndexOutOfBounds, "ListView.ListItems");
    }
    return *items_[static_cast<std::size_t>(index) - 1];
}

ListItem& ListView::Item(const std::string& key) const {
    ListItem* item = FindKey(key);
    if (item == nullptr) throw Failure(failure::ElementNotFound, "ListView.ListItems");
    return *item;
}

ListItem* ListView::FindKey(const std::string& key) const {
    if (key.empty()) return nullptr;
    for (const auto& item : items_) {
        if (EqualNoCase(item->key_, key)) return item.get();
    }
    return nullptr;
}

ListItem& ListView::Add() {
    Mine()->Lines.InsertLast();
    items_.push_back(std::unique_ptr<ListItem>(new ListItem(*this, foreColor_)));
    Mine()->Lines.Inserted();
    return *items_.back();
}

void ListView::Remove(int index) {
    const ListItem& item = Item(index);
    if (selected_ == &item) selected_ = nullptr;
    Mine()->Lines.Remove(index - 1);
    items_.erase(items_.begin() + (index - 1));
    Mine()->Lines.Removed();
    Mine()->FollowSelection();
}

void ListView::Clear() {
    if (items_.empty()) return;
    Mine()->Lines.Reset();
    selected_ = nullptr;
    items_.clear();
    Mine()->Lines.WasReset();
}

ListItem* ListView::SelectedItem() const {
    return selected_;
}

void ListView::ClearSelection() {
    Select(nullptr);
}

void ListView::Select(ListItem* item) {
    if (item == selected_) return;
    selected_ = item;
    Mine()->FollowSelection();
}

int ListView::PlaceOf(const ListItem& item) const {
    const auto place = std::find_if(items_.begin(), items_.end(),
                                    [&](const auto& each) { return each.get() == &item; });
    return static_cast<int>(place - items_.begin()) + 1;
}

void ListView::SetHideSelection(bool hide) {
    hideSelection_ = hide;
    Mine()->viewport()->update();
}

float ListView::RowHeight() const {
    return static_cast<float>(Mine()->RowPixels()) * TwipsPerPixel;
}

void ListView::SetFont(const Font& font) {
    font_ = font;
    Mine()->TakeFont(font);
}

void ListView::SetForeColor(std::int32_t color) {
    foreColor_ = color;
}

void ListView::SetColumns(const std::vector<float>& widths) {
    if (widths.empty()) throw Failure(failure::InvalidArgument, "ListView.ColumnHeaders");
    const bool recounted = widths.size() != widths_.size();
    if (recounted) Mine()->Lines.Reset();
    widths_ = widths;
    if (recounted) {
        Mine()->Lines.WasReset();
        Mine()->FollowSelection();
    }
    Mine()->TakeColumns();
}

void ListView::SetColumnWidth(int column, float width) {
    if (column < 1 || column > ColumnCount()) {
        throw Failure(failure::IndexOutOfBounds, "ListView.ColumnHeaders");
    }
    widths_[static_cast<std::size_t>(column) - 1] = width;
    Mine()->TakeColumns();
}

float ListView::ColumnWidth(int column) const {
    if (column < 1 || column > ColumnCount()) {
        throw Failure(failure::IndexOutOfBounds, "ListView.ColumnHeaders");
    }
    return widths_[static_cast<std::size_t>(column) - 1];
}

namespace {

// Numbers stand before other texts.
bool TextBefore(const std::string& a, const std::string& b) {
    const bool numberA = IsNumeric(a);
    const bool numberB = IsNumeric(b);
    if (numberA && numberB) return Val(a) < Val(b);
    if (numberA != numberB) return numberA;
    return LowerCase(a) < LowerCase(b);
}

}  // namespace

void ListView::SetSorted(bool sorted) {
    if (!sorted || items_.empty()) return;
    const auto text = [this](const ListItem& item) -> const std::string& {
        return SortKey == 0 ? item.Text() : item.SubItems(SortKey);
    };
    Mine()->Lines.Reset();
    std::stable_sort(items_.begin(), items_.end(), [&](const auto& a, const auto& b) {
        return SortOrder == 0 ? TextBefore(text(*a), text(*b)) : TextBefore(text(*b), text(*a));
    });
    Mine()->Lines.WasReset();
    Mine()->FollowSelection();
}

void ListView::Changed() {
    Mine()->TellChange();
}

}  // namespace larder
