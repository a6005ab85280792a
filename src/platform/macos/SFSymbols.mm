#include "macos/SFSymbols.h"

#import <AppKit/AppKit.h>

#include <cmath>

#include "macos/CGImagePixels.h"
#include "macos/ObjectValues.h"

namespace zd::mac::SFSymbols {

std::optional<Image> image(const std::string& name, double pointSize, double scale, Color color) {
    @autoreleasepool {
        NSImage* symbol = [NSImage imageWithSystemSymbolName:stringOf(name)
                                    accessibilityDescription:nil];
        if (symbol == nil)
            return std::nullopt;
        NSImageSymbolConfiguration* size =
            [NSImageSymbolConfiguration configurationWithPointSize:pointSize
                                                            weight:NSFontWeightRegular];
        NSColor* tint = [NSColor colorWithSRGBRed:color.red
                                            green:color.green
                                             blue:color.blue
                                            alpha:color.alpha];
        NSImageSymbolConfiguration* configuration = [size
            configurationByApplyingConfiguration:[NSImageSymbolConfiguration
                                                     configurationWithHierarchicalColor:tint]];
        NSImage* sized = [symbol imageWithSymbolConfiguration:configuration];
        if (sized == nil)
            return std::nullopt;
        NSRect area = NSMakeRect(0, 0, std::ceil(sized.size.width * scale),
                                 std::ceil(sized.size.height * scale));
        return imageOf([sized CGImageForProposedRect:&area context:nil hints:nil]);
    }
}

}  // namespace zd::mac::SFSymbols
