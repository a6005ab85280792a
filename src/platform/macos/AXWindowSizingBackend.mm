#include "macos/AXWindowSizingBackend.h"

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

namespace zd::mac {

// Handles to the window elements handed out, each element retained once. Elements are few
// (a process's windows, asked for a few times a run), so they are kept until the end.
struct AXWindowSizingBackend::Elements {
    std::mutex lock;
    std::map<std::uint64_t, AXUIElementRef> byHandle;
    std::uint64_t next = 1;

    SizableWindow keep(AXUIElementRef element) {
        std::lock_guard<std::mutex> guard(lock);
        CFRetain(element);
        const std::uint64_t handle = next++;
        byHandle[handle] = element;
        return SizableWindow{handle};
    }
    AXUIElementRef find(SizableWindow window) {
        std::lock_guard<std::mutex> guard(lock);
        auto it = byHandle.find(window.handle);
        return it == byHandle.end() ? nullptr : it->second;
    }
    ~Elements() {
        for (auto& entry : byHandle)
            CFRelease(entry.second);
    }
};

namespace {

bool isElement(CFTypeRef value) {
    return value != nullptr && CFGetTypeID(value) == AXUIElementGetTypeID();
}

}  // namespace

AXWindowSizingBackend::AXWindowSizingBackend() : elements_(std::make_unique<Elements>()) {}
AXWindowSizingBackend::~AXWindowSizingBackend() = default;

std::optional<SizableWindow> AXWindowSizingBackend::mainWindow(std::int32_t pid) {
    AXUIElementRef application = AXUIElementCreateApplication(pid);
    if (application == nullptr)
        return std::nullopt;
    CFTypeRef value = nullptr;
    const AXError error = AXUIElementCopyAttributeValue(application, CFSTR("AXMainWindow"), &value);
    CFRelease(application);
    std::optional<SizableWindow> result;
    if (error == kAXErrorSuccess && isElement(value))
        result = elements_->keep(static_cast<AXUIElementRef>(value));
    if (value != nullptr)
        CFRelease(value);
    return result;
}

std::vector<SizableWindow> AXWindowSizingBackend::windows(std::int32_t pid) {
    std::vector<SizableWindow> result;
    AXUIElementRef application = AXUIElementCreateApplication(pid);
    if (application == nullptr)
        return result;
    CFTypeRef value = nullptr;
    const AXError error = AXUIElementCopyAttributeValue(application, CFSTR("AXWindows"), &value);
    CFRelease(application);
    if (error == kAXErrorSuccess && value != nullptr && CFGetTypeID(value) == CFArrayGetTypeID()) {
        CFArrayRef list = static_cast<CFArrayRef>(value);
        for (CFIndex i = 0; i < CFArrayGetCount(list); ++i) {
            CFTypeRef element = CFArrayGetValueAtIndex(list, i);
            if (isElement(element))
                result.push_back(elements_->keep(static_cast<AXUIElementRef>(element)));
        }
    }
    if (value != nullptr)
        CFRelease(value);
    return result;
}

bool AXWindowSizingBackend::setSize(SizableWindow window, Size size) {
    AXUIElementRef element = elements_->find(window);
    if (element == nullptr)
        return false;
    const CGSize wanted = CGSizeMake(size.width, size.height);
    AXValueRef value = AXValueCreate(kAXValueTypeCGSize, &wanted);
    if (value == nullptr)
        return false;
    const AXError error = AXUIElementSetAttributeValue(element, CFSTR("AXSize"), value);
    CFRelease(value);
    return error == kAXErrorSuccess;
}

bool AXWindowSizingBackend::setPosition(SizableWindow window, Point topLeft) {
    AXUIElementRef element = elements_->find(window);
    if (element == nullptr)
        return false;
    const CGPoint wanted = CGPointMake(topLeft.x, topLeft.y);
    AXValueRef value = AXValueCreate(kAXValueTypeCGPoint, &wanted);
    if (value == nullptr)
        return false;
    const AXError error = AXUIElementSetAttributeValue(element, CFSTR("AXPosition"), value);
    CFRelease(value);
    return error == kAXErrorSuccess;
}

bool AXWindowSizingBackend::isProcessTrusted(bool prompt) {
    NSDictionary* options = @{@"AXTrustedCheckOptionPrompt" : @(prompt)};
    return AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options);
}

}  // namespace zd::mac
