#include "MacSettingsStore.h"

#import "NSString+QVStdString.h"

#import <Foundation/Foundation.h>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>
#include <variant>

namespace quorvane {

namespace {

NSUserDefaults* defaults() {
    return [NSUserDefaults standardUserDefaults];
}

NSString* defaultsKey(const std::string& key) {
    return [NSString qv_stringWithStdString:key];
}

bool isFloatingPoint(NSNumber* number) {
    const char* type = number.objCType;
    return std::strcmp(type, @encode(double)) == 0 || std::strcmp(type, @encode(float)) == 0;
}

SettingValue fromNumber(NSNumber* number) {
    if (CFGetTypeID((__bridge CFTypeRef)number) == CFBooleanGetTypeID()) {
        return SettingValue(static_cast<bool>(number.boolValue));
    }
    if (isFloatingPoint(number)) {
        return SettingValue(number.doubleValue);
    }
    // Only another program writes integers beyond int64; the nearest double keeps their size.
    if (std::strcmp(number.objCType, @encode(unsigned long long)) == 0 &&
        number.unsignedLongLongValue >
            static_cast<unsigned long long>(std::numeric_limits<std::int64_t>::max())) {
        return SettingValue(static_cast<double>(number.unsignedLongLongValue));
    }
    return SettingValue(static_cast<std::int64_t>(number.longLongValue));
}

SettingValue fromData(NSData* data) {
    SettingBytes bytes;
    if (data.length > 0) {
        bytes.bytes.assign(static_cast<const char*>(data.bytes), data.length);
    }
    return SettingValue(std::move(bytes));
}

id propertyListObject(const SettingValue& value) {
    return std::visit(
        [](const auto& held) -> id {
            using T = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<T, bool>) {
                return [NSNumber numberWithBool:held];
            } else if constexpr (std::is_same_v<T, std::int64_t>) {
                return [NSNumber numberWithLongLong:held];
            } else if constexpr (std::is_same_v<T, double>) {
                return [NSNumber numberWithDouble:held];
            } else if constexpr (std::is_same_v<T, std::string>) {
                return [NSString qv_stringWithStdString:held];
            } else {
                return [NSData dataWithBytes:held.bytes.data() length:held.bytes.size()];
            }
        },
        value);
}

} // namespace

std::optional<SettingValue> MacSettingsStore::value(const std::string& key) const {
    id object = [defaults() objectForKey:defaultsKey(key)];
    if ([object isKindOfClass:[NSNumber class]]) {
        return fromNumber(object);
    }
    if ([object isKindOfClass:[NSString class]]) {
        NSString* text = object;
        return SettingValue([text qv_stdString]);
    }
    if ([object isKindOfClass:[NSData class]]) {
        return fromData(object);
    }
    return std::nullopt;
}

void MacSettingsStore::setValue(const std::string& key, const SettingValue& value) {
    [defaults() setObject:propertyListObject(value) forKey:defaultsKey(key)];
}

void MacSettingsStore::remove(const std::string& key) {
    [defaults() removeObjectForKey:defaultsKey(key)];
}

} // namespace quorvane
