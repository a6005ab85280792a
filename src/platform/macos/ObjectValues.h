#pragma once
// Property-list objects (dictionaries, arrays, numbers, strings, dates, data) to and from the
// core's loosely typed Value. Only for Objective-C++ files.

#import <Foundation/Foundation.h>

#include <string>

#include "model/Value.h"

namespace zd::mac {

// A null value for nil and for any object that is no property-list type.
Value valueOf(id object);
// Nil for a null value.
id objectOf(const Value& value);

NSString* stringOf(const std::string& text);
// Empty for nil.
std::string textOf(NSString* string);

}  // namespace zd::mac
