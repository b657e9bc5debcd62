#include "Qt/Quick/PaintedAreaQuick.h"

#include <QtGui/QVector4D>
#include <QtQuick/QQuickItem>
#include <QtQuick/QSGGeometry>
#include <QtQuick/QSGNode>
#include <QtQuick/QSGRenderNode>
#include <QtQuick/QSGTransformNode>
#include <algorithm>
#include <cmath>
#include <limits>
// The public interface does not show the nodes of an item.
#include <private/qquickitem_p.h>
#include <private/qquickshadereffect_p.h>

#include "Qt/Quick/ItemClassesQuick.h"

namespace merovanta::quick {

namespace {

bool isFinite(const QRectF& rect) {
    return std::isfinite(rect.x()) && std::isfinite(rect.y()) && std::isfinite(rect.width()) &&
           std::isfinite(rect.height());
}

/// Unlike QRectF's union, this counts what has no area.
QRectF around(const QRectF& one, const QRectF& other) {
    const double left = std::min(one.left(), other.left());
    const double top = std::min(one.top(), other.top());
    return {left, top, std::max(one.right(), other.right()) - left,
            std::max(one.bottom(), other.bottom()) - top};
}

/// The bounds of the vertices; absent if they are of a kind that is not known here.
std::optional<QRectF> boundsOf(const QSGGeometry& geometry) {
    const QSGGeometry::Attribute* const attribute = geometry.attributes();
    const bool isPoint = geometry.attributeCount() > 0 && attribute->position == 0 &&
                         attribute->type == QSGGeometry::FloatType && attribute->tupleSize >= 2;
    if (!isPoint) return std::nullopt;
    float left = std::numeric_limits<float>::infinity();
    float top = left;
    float right = -left;
    float bottom = -left;
    const auto* vertex = static_cast<const char*>(geometry.vertexData());
    for (int index = 0; index < geometry.vertexCount(); ++index, vertex += geometry.sizeOfVertex()) {
        const auto* const place = reinterpret_cast<const float*>(vertex);
        left = std::min(left, place[0]);
        right = std::max(right, place[0]);
        top = std::min(top, place[1]);
        bottom = std::max(bottom, place[1]);
    }
    if (!(left <= right && top <= bottom)) return std::nullopt;
    const bool isThick = geometry.drawingMode() == QSGGeometry::DrawLines ||
                         geometry.drawingMode() == QSGGeometry::DrawLineStrip ||
                         geometry.drawingMode() == QSGGeometry::DrawLineLoop ||
                         geometry.drawingMode() == QSGGeometry::DrawPoints;
    const double edge = isThick ? geometry.lineWidth() : 0;
    return QRectF(QPointF(left, top), QPointF(right, bottom)).adjusted(-edge, -edge, edge, edge);
}

/// Collects where nodes paint.
struct NodeBounds {
    bool isSoftware = false;
    QRectF area;
    bool isKnown = true;

    void add(const QMatrix4x4& matrix, const std::optional<QRectF>& rect) {
        const auto place = rect ? mapped(matrix, *rect) : std::nullopt;
        if (place) {
            area = around(area, *place);
        } else {
            isKnown = false;
        }
    }

    void visit(QSGNode* node, const QMatrix4x4& matrix) {
        switch (node->type()) {
            case QSGNode::TransformNodeType:
                return visitChildren(*node, matrix * static_cast<QSGTransformNode*>(node)->matrix());
            case QSGNode::GeometryNodeType: {
                // The nodes of the software renderer have none, but say that they have.
                if (isSoftware) break;
                const QSGGeometry* const geometry = static_cast<QSGGeometryNode*>(node)->geometry();
                if (geometry != nullptr && geometry->vertexCount() > 0) add(matrix, boundsOf(*geometry));
                break;
            }
            case QSGNode::RenderNodeType: {
                const auto* const render = static_cast<const QSGRenderNode*>(node);
                const bool isBounded = render->flags().testFlag(QSGRenderNode::BoundedRectRendering);
                add(matrix, isBounded ? std::optional(render->rect()) : std::nullopt);
                break;
            }
            default:
                break;
        }
        visitChildren(*node, matrix);
    }

    void visitChildren(const QSGNode& node, const QMatrix4x4& matrix) {
        for (QSGNode* child = node.firstChild(); child != nullptr; child = child->nextSibling())
            visit(child, matrix);
    }
};

/// How far the software renderer's letters may reach over the bounds of a text: it does not tell.
double overhangOf(const QFont& font) {
    const double size = font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * 2;
    return std::max(size, 1.0) / 4;
}

QPointF shiftedAndScaled(const QMatrix4x4& matrix, QPointF place) {
    return {static_cast<double>(matrix(0, 0) * static_cast<float>(place.x()) + matrix(0, 3)),
            static_cast<double>(matrix(1, 1) * static_cast<float>(place.y()) + matrix(1, 3))};
}

}  // namespace

std::optional<QRectF> paintedArea(const QQuickItem& item, const ItemClassQuick& type, bool isSoftware) {
    QRectF area(QPointF(), item.size());
    if (!isFinite(area)) return std::nullopt;
    area = area.normalized();
    if (!item.flags().testFlag(QQuickItem::ItemHasContents)) return area;
    if (type.paintsAnywhere) return std::nullopt;
    if (type.isShaderEffect) {
        // A shader may move the corners anywhere.
        const auto& effect = static_cast<const QQuickShaderEffect&>(item);
        if (!effect.vertexShader().isEmpty()) return std::nullopt;
    }
    const QRectF claimed = item.boundingRect();
    if (!isFinite(claimed)) return std::nullopt;
    area = around(area, claimed.normalized());
    QSGNode* const node = QQuickItemPrivate::get(&item)->paintNode;
    if (node != nullptr) {
        NodeBounds bounds{.isSoftware = isSoftware, .area = area};
        bounds.visit(node, QMatrix4x4());
        if (!bounds.isKnown) return std::nullopt;
        area = bounds.area;
    }
    if (isSoftware) {
        // It paints rectangles in whole points, and of a canvas all, but tells neither.
        if (type.isCanvas) {
            area = around(area, QRectF(QPointF(), item.property("canvasSize").toSizeF()));
            area = around(area, item.property("canvasWindow").toRectF());
        }
        area = area.toAlignedRect();
    }
    if (isSoftware && type.fontOf != nullptr) {
        const double edge = overhangOf(type.fontOf(item));
        area.adjust(-edge, -edge, edge, edge);
    }
    return area;
}

bool isShiftOrScale(const QMatrix4x4& matrix) {
    return (matrix.flags() & ~QMatrix4x4::Flags(QMatrix4x4::Translation | QMatrix4x4::Scale)) == 0;
}

std::optional<QRectF> mapped(const QMatrix4x4& matrix, const QRectF& rect) {
    if (!isFinite(rect)) return std::nullopt;
    if (isShiftOrScale(matrix)) {
        const QPointF one = shiftedAndScaled(matrix, rect.topLeft());
        const QPointF other = shiftedAndScaled(matrix, rect.bottomRight());
        const QRectF place(QPointF(std::min(one.x(), other.x()), std::min(one.y(), other.y())),
                           QPointF(std::max(one.x(), other.x()), std::max(one.y(), other.y())));
        return isFinite(place) ? std::optional(place) : std::nullopt;
    }
    double left = std::numeric_limits<double>::infinity();
    double top = left;
    double right = -left;
    double bottom = -left;
    for (const QPointF corner : {rect.topLeft(), rect.topRight(), rect.bottomLeft(), rect.bottomRight()}) {
        const QVector4D place =
            matrix * QVector4D(static_cast<float>(corner.x()), static_cast<float>(corner.y()), 0, 1);
        constexpr float nearest = 1e-4F;
        const bool isPlace = place.w() > nearest && std::isfinite(place.x()) && std::isfinite(place.y()) &&
                             std::isfinite(place.w());
        if (!isPlace) return std::nullopt;
        const double x = static_cast<double>(place.x()) / static_cast<double>(place.w());
        const double y = static_cast<double>(place.y()) / static_cast<double>(place.w());
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
    }
    return QRectF(QPointF(left, top), QPointF(right, bottom));
}

}  // namespace merovanta::quick
