#include "addin/libraries/flowicons/FlowIcons.h"

#include "addin/libraries/svgicons/SvgIcon.h"

namespace flowicons {

namespace {

class LibraryImpl final : public Library {
public:
    QIcon icon(Picture picture) const override
    {
        switch (picture) {
        case Picture::Folder:
            return zn::svgIcon(QStringLiteral(":/zn/flow/folder.svg"));
        case Picture::Pdf3d:
            return zn::svgIcon(QStringLiteral(":/zn/flow/pdf-3d.svg"));
        }
        return {};
    }
};

} // namespace

} // namespace flowicons

extern "C" __attribute__((visibility("default"))) flowicons::Library* flowiconsLibrary()
{
    return new flowicons::LibraryImpl;
}
