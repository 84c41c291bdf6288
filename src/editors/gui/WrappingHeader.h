#pragma once

#include <QHeaderView>

namespace quillon {

// A grid header whose captions wrap onto more lines instead of being cut,
// as the editors' long captions ("Nitrogen concent- ration, %") need.
class WrappingHeader final : public QHeaderView {
    Q_OBJECT
public:
    explicit WrappingHeader(QWidget* parent = nullptr);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    QSize sectionSizeFromContents(int logicalIndex) const override;
};

} // namespace quillon
