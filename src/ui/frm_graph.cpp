#include "ui/frm_graph.hpp"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenuBar>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "base/errors.hpp"
#include "frame/error_handler.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

namespace {

constexpr const char* kModule = "frmGraph";

// The fill styles, in the order of GraphFill.
constexpr Qt::BrushStyle kBrushes[FillStyleCount] = {
    Qt::SolidPattern, Qt::NoBrush,      Qt::HorPattern,   Qt::VerPattern,
    Qt::BDiagPattern, Qt::FDiagPattern, Qt::CrossPattern, Qt::DiagCrossPattern};

QBrush brushOf(int32_t colour, int16_t fill) {
    const bool known = fill >= 0 && fill < FillStyleCount;
    return QBrush(storedColour(colour), known ? kBrushes[fill] : Qt::SolidPattern);
}

// Maps the axes' units into the plotting rectangle.
struct Scale {
    QRectF plot;
    const GraphPicture& p;
    double x(double value) const {
        return plot.left() + (value - p.x.low) / (p.x.high - p.x.low) * plot.width();
    }
    double y(double value) const {
        return plot.bottom() - (value - p.y.low) / (p.y.high - p.y.low) * plot.height();
    }
};

int widestLabel(const QFontMetrics& metrics, const std::vector<GraphTick>& ticks) {
    int widest = 0;
    for (const GraphTick& tick : ticks)
        widest = std::max(widest, metrics.horizontalAdvance(lq(tick.label)));
    return widest;
}

void drawLegend(QPainter& painter, QPointF at, const GraphPicture& p) {
    const int line = painter.fontMetrics().height() + 4;
    for (const GraphKey& key : p.legend) {
        const QRectF swatch(at.x(), at.y() + 2, 18, line - 6);
        if (key.line) {
            painter.setPen(QPen(storedColour(key.colour), 2));
            painter.drawLine(QPointF(swatch.left(), swatch.center().y()),
                             QPointF(swatch.right(), swatch.center().y()));
        } else {
            painter.setPen(Qt::black);
            painter.setBrush(brushOf(key.colour, key.fill));
            painter.drawRect(swatch);
        }
        painter.setPen(Qt::black);
        painter.drawText(QPointF(swatch.right() + 6, at.y() + line - 6), lq(key.name));
        at.ry() += line;
    }
}

// The value axis' grid, behind the boxes and curves.
void drawGrid(QPainter& painter, const Scale& s) {
    painter.setPen(QPen(QColor(200, 200, 200), 1, Qt::DotLine));
    for (const GraphTick& tick : s.p.y.ticks) {
        const double y = s.y(tick.value);
        painter.drawLine(QPointF(s.plot.left(), y), QPointF(s.plot.right(), y));
    }
}

QFont boldOf(QFont font) {
    font.setBold(true);
    return font;
}

// The x axis: its line, tick marks with their labels, and its title under them.
void GraphXtic(QPainter& painter, const Scale& s) {
    const QFontMetrics metrics = painter.fontMetrics();
    const QRectF& plot = s.plot;
    painter.setPen(Qt::black);
    for (const GraphTick& tick : s.p.x.ticks) {
        const double x = s.x(tick.value);
        painter.drawLine(QPointF(x, plot.bottom()), QPointF(x, plot.bottom() + 4));
        const QRectF label(x - 60, plot.bottom() + 6, 120, metrics.height());
        painter.drawText(label, Qt::AlignHCenter | Qt::AlignTop, lq(tick.label));
    }
    painter.drawLine(plot.bottomLeft(), plot.bottomRight());
    const QFont font = painter.font();
    painter.setFont(boldOf(font));
    const QRectF title(plot.left(), plot.bottom() + 8 + metrics.height(), plot.width(),
                       metrics.height() + 4);
    painter.drawText(title, Qt::AlignCenter, lq(s.p.x.title));
    painter.setFont(font);
}

// The y axis: its line, tick marks with their labels, and its title and unit turned upright
// along the left edge.
void GraphYtic(QPainter& painter, const Scale& s) {
    const QFontMetrics metrics = painter.fontMetrics();
    const QRectF& plot = s.plot;
    painter.setPen(Qt::black);
    for (const GraphTick& tick : s.p.y.ticks) {
        const double y = s.y(tick.value);
        painter.drawLine(QPointF(plot.left() - 4, y), QPointF(plot.left(), y));
        const QRectF label(0, y - metrics.height(), plot.left() - 7, 2 * metrics.height());
        painter.drawText(label, Qt::AlignRight | Qt::AlignVCenter, lq(tick.label));
    }
    painter.drawLine(plot.bottomLeft(), plot.topLeft());
    const QFont font = painter.font();
    painter.setFont(boldOf(font));
    painter.save();
    painter.translate(4, plot.center().y());
    painter.rotate(-90);
    const GraphAxis& axis = s.p.y;
    const QString title = lq(axis.title) + (axis.unit.empty() ? "" : " " + lq(axis.unit));
    painter.drawText(QRectF(-plot.height() / 2, 0, plot.height(), metrics.height() + 4),
                     Qt::AlignCenter, title);
    painter.restore();
    painter.setFont(font);
}

}  // namespace

void paintGraph(QPainter& painter, const QRect& area, const GraphPicture& p) {
    painter.fillRect(area, Qt::white);
    QFont font("Arial", 8);
    painter.setFont(font);
    const QFontMetrics metrics = painter.fontMetrics();
    int legendWidth = 0;
    for (const GraphKey& key : p.legend)
        legendWidth = std::max(legendWidth, metrics.horizontalAdvance(lq(key.name)) + 40);
    const int left = widestLabel(metrics, p.y.ticks) + 2 * metrics.height() + 14;
    const int top = 2 * metrics.height() + 16;
    const int bottom = 2 * metrics.height() + 20;
    const QRectF plot(area.left() + left, area.top() + top,
                      std::max(10, area.width() - left - legendWidth - 16),
                      std::max(10, area.height() - top - bottom));
    const Scale scale{plot, p};

    QFont title = font;
    title.setPointSize(10);
    title.setBold(true);
    painter.setFont(title);
    painter.setPen(Qt::black);
    painter.drawText(QRectF(area.left(), area.top() + 4, area.width(), top - 8), Qt::AlignCenter,
                     lq(p.title));
    painter.setFont(font);

    drawGrid(painter, scale);
    for (const GraphBox& box : p.boxes) {
        const QRectF rect(QPointF(scale.x(box.left), scale.y(box.top)),
                          QPointF(scale.x(box.right), scale.y(box.bottom)));
        painter.setPen(box.outlined ? QPen(Qt::black) : QPen(Qt::NoPen));
        painter.setBrush(brushOf(box.colour, box.fill));
        painter.drawRect(rect);
    }
    painter.setRenderHint(QPainter::Antialiasing, true);
    for (const GraphCurve& curve : p.curves) {
        QPolygonF line;
        for (const auto& [x, y] : curve.points) line << QPointF(scale.x(x), scale.y(y));
        painter.setPen(QPen(storedColour(curve.colour), 2));
        painter.drawPolyline(line);
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
    GraphXtic(painter, scale);
    GraphYtic(painter, scale);
    drawLegend(painter, QPointF(plot.right() + 16, plot.top()), p);
}

QColor storedColour(int32_t stored) {
    return QColor(stored & 0xff, (stored >> 8) & 0xff, (stored >> 16) & 0xff);
}

GraphView::GraphView(QWidget* parent) : QWidget(parent) {
    setObjectName("picGraph");
    setMinimumSize(320, 240);
}

void GraphView::setPicture(GraphPicture picture) {
    picture_ = std::move(picture);
    update();
}

QImage GraphView::image() const {
    QImage image(size(), QImage::Format_RGB32);
    QPainter painter(&image);
    paintGraph(painter, image.rect(), picture_);
    return image;
}

void GraphView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintGraph(painter, rect(), picture_);
}

frmGraph::frmGraph(Model& m, Host& host, QWidget* parent) : QDialog(parent), m_(m), host_(host) {
    setObjectName("frmGraph");
    auto* bar = new QMenuBar(this);
    QMenu* file = bar->addMenu("&File");
    file->setObjectName("mnuFile");
    const auto add = [&](const char* name, const QString& caption, auto handler) {
        QAction* action = file->addAction(caption);
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, handler);
    };
    add("mnuCopyImage", "&Copy Image", [this] { mnuCopyImage_Click(); });
    add("mnuSaveImage", "&Save Image...", [this] { mnuSaveImage_Click(); });
    file->addSeparator();
    add("mnuOK", "&OK", [this] { close(); });

    picGraph_ = new GraphView(this);
    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(picGraph_);
    UpdateCaption(*this, m_, "Graph");
    resizeWithin(*this, QSize(860, 560));
}

void frmGraph::GraphScreen(GraphPicture picture) {
    picGraph_->setPicture(std::move(picture));
}

void frmGraph::mnuCopyImage_Click() {
    QGuiApplication::clipboard()->setImage(image());
}

void frmGraph::mnuSaveImage_Click() {
    FileRequest request;
    request.title = "Save Graph As";
    request.filter = "Bitmap (*.bmp)|*.bmp|PNG Image (*.png)|*.png";
    request.overwritePrompt = true;
    const auto choice = host_.prompt.saveFile(request);
    if (!choice) return;
    runGuarded(m_, host_, "mnuSaveImage_Click", kModule, [&] {
        const QString path = qs(choice->path);
        const bool png = path.endsWith(".png", Qt::CaseInsensitive) ||
                         (choice->filterIndex == 2 && !path.endsWith(".bmp", Qt::CaseInsensitive));
        if (!image().save(path, png ? "PNG" : "BMP"))
            throw ArborexError(ErrPathFileAccess, choice->path);
    });
}

}  // namespace arborex
