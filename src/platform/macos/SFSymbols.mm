#include "macos/SFSymbols.h"

#import <AppKit/AppKit.h>

#include "macos/CGImagePixels.h"
#include "macos/ObjectValues.h"

namespace zd::mac::SFSymbols {

std::optional<Picture> picture(const std::string& name, double pointSize) {
    @autoreleasepool {
        NSImage* symbol = [NSImage imageWithSystemSymbolName:stringOf(name)
                                    accessibilityDescription:nil];
        if (symbol == nil)
            return std::nullopt;
        NSImageSymbolConfiguration* configuration =
            [NSImageSymbolConfiguration configurationWithPointSize:pointSize
                                                            weight:NSFontWeightRegular];
        NSImage* sized = [symbol imageWithSymbolConfiguration:configuration];
        if (sized == nil)
            return std::nullopt;
        NSRect area = NSMakeRect(0, 0, sized.size.width, sized.size.height);
        auto pixels = imageOf([sized CGImageForProposedRect:&area context:nil hints:nil]);
        if (!pixels)
            return std::nullopt;
        return Picture{{sized.size.width, sized.size.height}, std::move(*pixels)};
    }
}

}  // namespace zd::mac::SFSymbols
