#include "macos/ObjectValues.h"

#import <CoreFoundation/CoreFoundation.h>

#include "macos/PropertyListNumber.h"

namespace zd::mac {

NSString* stringOf(const std::string& text) {
    NSString* string = [[NSString alloc] initWithBytes:text.data()
                                                length:text.size()
                                              encoding:NSUTF8StringEncoding];
    return string != nil ? string : @"";
}

std::string textOf(NSString* string) {
    const char* utf8 = string.UTF8String;
    return utf8 != nullptr ? std::string(utf8) : std::string();
}

Value valueOf(id object) {
    if ([object isKindOfClass:[NSString class]])
        return Value(textOf(static_cast<NSString*>(object)));
    if ([object isKindOfClass:[NSNumber class]]) {
        NSNumber* number = object;
        // Booleans are the shared CFBoolean objects, whatever type code they report.
        const bool isBooleanObject =
            CFGetTypeID((__bridge CFTypeRef)number) == CFBooleanGetTypeID();
        const char* type = number.objCType;
        return valueOfNumber(numberKindOf(type, isBooleanObject), number.boolValue,
                             number.longLongValue, number.unsignedLongLongValue, number.doubleValue,
                             type);
    }
    if ([object isKindOfClass:[NSArray class]]) {
        ValueArray array;
        for (id element in static_cast<NSArray*>(object))
            array.push_back(valueOf(element));
        return Value(std::move(array));
    }
    if ([object isKindOfClass:[NSDictionary class]]) {
        ValueDictionary dictionary;
        NSDictionary* source = object;
        for (id key in source) {
            if ([key isKindOfClass:[NSString class]])
                dictionary[textOf(static_cast<NSString*>(key))] = valueOf(source[key]);
        }
        return Value(std::move(dictionary));
    }
    return Value();
}

id objectOf(const Value& value) {
    if (auto flag = value.asBool())
        return @(*flag);
    if (auto integer = value.asInteger())
        return @(static_cast<long long>(*integer));
    if (value.isDouble())
        return @(*value.asNumber());
    if (const auto* text = value.asString())
        return stringOf(*text);
    if (const auto* array = value.asArray()) {
        NSMutableArray* result = [NSMutableArray arrayWithCapacity:array->size()];
        for (const Value& element : *array) {
            id object = objectOf(element);
            if (object != nil)
                [result addObject:object];
        }
        return result;
    }
    if (const auto* dictionary = value.asDictionary()) {
        NSMutableDictionary* result = [NSMutableDictionary dictionary];
        for (const auto& [key, element] : *dictionary) {
            id object = objectOf(element);
            if (object != nil)
                result[stringOf(key)] = object;
        }
        return result;
    }
    return nil;
}

}  // namespace zd::mac
