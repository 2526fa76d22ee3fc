#pragma once

#include "addin/pages/lists/ImageList.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>
#include <QString>

namespace zn {

/// One row of a `VListCtrl`. Rows count their references, so that a list and its owner may both hold them.
/// Columns count from 0 in the order in which the list's columns were made.
class VListCtrlItem : public boost::intrusive_ref_counter<VListCtrlItem> {
public:
    VListCtrlItem() = default;
    VListCtrlItem(const VListCtrlItem&) = delete;
    VListCtrlItem& operator=(const VListCtrlItem&) = delete;
    virtual ~VListCtrlItem() = default;

    virtual QString text(int column) const = 0;
    /// The cell's image in the list's image list; `ImageList::noImage` for none. Asked only for rows on the screen.
    virtual int image(int /*column*/) const { return ImageList::noImage; }
};

using VListCtrlItemRef = boost::intrusive_ptr<VListCtrlItem>;

} // namespace zn
