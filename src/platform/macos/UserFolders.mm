#include "macos/UserFolders.h"

#import <Foundation/Foundation.h>

namespace zd::mac::UserFolders {

std::optional<std::filesystem::path> applicationSupport() {
    @autoreleasepool {
        NSURL* folder =
            [[NSFileManager defaultManager] URLsForDirectory:NSApplicationSupportDirectory
                                                   inDomains:NSUserDomainMask]
                .firstObject;
        if (folder == nil || !folder.isFileURL || folder.path.length == 0)
            return std::nullopt;
        return std::filesystem::path(folder.path.fileSystemRepresentation);
    }
}

}  // namespace zd::mac::UserFolders
