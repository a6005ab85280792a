#include "macos/MacToolRunner.h"

#import <Foundation/Foundation.h>

#include "macos/ObjectValues.h"

namespace zd::mac {

std::optional<ToolResult> runTool(const std::string& path,
                                  const std::vector<std::string>& arguments) {
    @autoreleasepool {
        NSTask* task = [[NSTask alloc] init];
        task.executableURL = [NSURL fileURLWithPath:stringOf(path)];
        NSMutableArray<NSString*>* list = [NSMutableArray arrayWithCapacity:arguments.size()];
        for (const std::string& argument : arguments)
            [list addObject:stringOf(argument)];
        task.arguments = list;
        NSPipe* output = [NSPipe pipe];
        NSPipe* errors = [NSPipe pipe];
        task.standardOutput = output;
        task.standardError = errors;
        NSError* error = nil;
        if (![task launchAndReturnError:&error])
            return std::nullopt;
        // Read both pipes to their ends before the wait, so a talkative tool can't fill a pipe
        // and block on it while we wait for its exit.
        __block NSData* errorBytes = nil;
        dispatch_group_t group = dispatch_group_create();
        dispatch_group_async(group, dispatch_get_global_queue(QOS_CLASS_UTILITY, 0), ^{
          errorBytes = [errors.fileHandleForReading readDataToEndOfFile];
        });
        NSData* outputBytes = [output.fileHandleForReading readDataToEndOfFile];
        dispatch_group_wait(group, DISPATCH_TIME_FOREVER);
        [task waitUntilExit];
        ToolResult result;
        result.exitStatus = task.terminationStatus;
        result.standardOutput.assign(static_cast<const char*>(outputBytes.bytes),
                                     outputBytes.length);
        return result;
    }
}

}  // namespace zd::mac
