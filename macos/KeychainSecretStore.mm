#include "KeychainSecretStore.h"

#include "CFRef.h"
#import "NSString+QVStdString.h"

#import <Foundation/Foundation.h>
#import <Security/Security.h>
#include <cstddef>

namespace quorvane {

namespace {

NSMutableDictionary* itemQuery(const std::string& service, const std::string& account) {
    return [@{
        (__bridge id)kSecClass : (__bridge id)kSecClassGenericPassword,
        (__bridge id)kSecAttrService : [NSString qv_stringWithStdString:service],
        (__bridge id)kSecAttrAccount : [NSString qv_stringWithStdString:account],
    } mutableCopy];
}

NSData* valueData(const std::string& data) {
    return [NSData dataWithBytes:data.data() length:data.size()];
}

std::string bytesOf(CFDataRef data) {
    const CFIndex length = CFDataGetLength(data);
    if (length <= 0) {
        return {};
    }
    return std::string(reinterpret_cast<const char*>(CFDataGetBytePtr(data)),
                       static_cast<std::size_t>(length));
}

} // namespace

SecretCopyResult KeychainSecretStore::copy(const std::string& service, const std::string& account) {
    NSMutableDictionary* query = itemQuery(service, account);
    query[(__bridge id)kSecReturnData] = (__bridge id)kCFBooleanTrue;
    query[(__bridge id)kSecMatchLimit] = (__bridge id)kSecMatchLimitOne;

    CFRef<CFTypeRef> result;
    SecretCopyResult answer;
    answer.status = SecItemCopyMatching((__bridge CFDictionaryRef)query, result.put());
    if (result && CFGetTypeID(result.get()) == CFDataGetTypeID()) {
        answer.data = bytesOf(static_cast<CFDataRef>(result.get()));
    }
    return answer;
}

std::int32_t KeychainSecretStore::add(const std::string& service, const std::string& account,
                                      const std::string& data) {
    NSMutableDictionary* attributes = itemQuery(service, account);
    attributes[(__bridge id)kSecValueData] = valueData(data);
    return SecItemAdd((__bridge CFDictionaryRef)attributes, nullptr);
}

std::int32_t KeychainSecretStore::update(const std::string& service, const std::string& account,
                                         const std::string& data) {
    NSMutableDictionary* query = itemQuery(service, account);
    NSDictionary* changes = @{(__bridge id)kSecValueData : valueData(data)};
    return SecItemUpdate((__bridge CFDictionaryRef)query, (__bridge CFDictionaryRef)changes);
}

std::int32_t KeychainSecretStore::remove(const std::string& service, const std::string& account) {
    NSMutableDictionary* query = itemQuery(service, account);
    return SecItemDelete((__bridge CFDictionaryRef)query);
}

} // namespace quorvane
