#pragma once

// clang-format off

// What Brimlo uses of Foundation, declared from its documentation, for the check on Linux alone: a
// Mac has the real header. tools/macos/lint-objc holds every name and type here against a list that
// was made from Apple's SDK; tools/macos/make-sdk reads it for the names that may be linked against.
// One declaration a line.

#include <objc/NSObjCRuntime.h>
#include <objc/NSObject.h>

#ifndef NS_ENUM
#define NS_ENUM(type, name) enum name : type name; enum name : type
#endif

@class NSAppleEventDescriptor;
@class NSArray<ObjectType>;
@class NSDictionary<KeyType, ObjectType>;
@class NSString;
@class NSURL;

typedef NSString* NSErrorDomain;
typedef NSString* NSURLResourceKey;
typedef NSString* NSNotificationName;

typedef struct {
    unsigned long state;
    id __unsafe_unretained* itemsPtr;
    unsigned long* mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;

@interface NSString : NSObject
+ (instancetype)stringWithUTF8String:(const char*)text;
@property(readonly) const char* UTF8String;
@end

@interface NSValue : NSObject
@end

@interface NSNumber : NSValue
+ (NSNumber*)numberWithLongLong:(long long)value;
@property(readonly) long long longLongValue;
@property(readonly) NSInteger integerValue;
@end

@interface NSArray<__covariant ObjectType> : NSObject
+ (instancetype)arrayWithObjects:(const ObjectType[])objects count:(NSUInteger)count;
+ (instancetype)arrayWithObject:(ObjectType)object;
@property(readonly) NSUInteger count;
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state objects:(id __unsafe_unretained[])buffer count:(NSUInteger)count;
@end

@interface NSMutableArray<ObjectType> : NSArray<ObjectType>
- (void)addObject:(ObjectType)object;
@end

@interface NSDictionary<__covariant KeyType, __covariant ObjectType> : NSObject
+ (instancetype)dictionaryWithObjects:(const ObjectType[])objects forKeys:(const KeyType[])keys count:(NSUInteger)count;
- (ObjectType)objectForKeyedSubscript:(KeyType)key;
@end

@interface NSData : NSObject
+ (instancetype)dataWithBytes:(const void*)bytes length:(NSUInteger)length;
@property(readonly) const void* bytes;
@property(readonly) NSUInteger length;
@end

@interface NSError : NSObject
@property(readonly, copy) NSErrorDomain domain;
@property(readonly) NSInteger code;
@property(readonly, copy) NSString* localizedDescription;
@end

@interface NSURL : NSObject
+ (NSURL*)fileURLWithFileSystemRepresentation:(const char*)path isDirectory:(BOOL)isDirectory relativeToURL:(NSURL*)baseURL;
- (NSDictionary<NSURLResourceKey, id>*)resourceValuesForKeys:(NSArray<NSURLResourceKey>*)keys error:(NSError**)error;
@property(readonly, copy) NSString* path;
@end

@interface NSFileManager : NSObject
@property(class, readonly, strong) NSFileManager* defaultManager;
- (BOOL)trashItemAtURL:(NSURL*)url resultingItemURL:(NSURL* __autoreleasing*)outResultingURL error:(NSError**)error;
- (BOOL)moveItemAtURL:(NSURL*)srcURL toURL:(NSURL*)dstURL error:(NSError**)error;
@end

typedef NS_ENUM(NSInteger, NSByteCountFormatterCountStyle) {
    NSByteCountFormatterCountStyleFile = 0,
};

@interface NSFormatter : NSObject
@end

@interface NSByteCountFormatter : NSFormatter
@property NSByteCountFormatterCountStyle countStyle;
@property BOOL allowsNonnumericFormatting;
- (NSString*)stringFromByteCount:(long long)byteCount;
@end

typedef NS_ENUM(NSUInteger, NSPropertyListMutabilityOptions) {
    NSPropertyListImmutable = 0,
};

typedef NS_ENUM(NSUInteger, NSPropertyListFormat) {
    NSPropertyListXMLFormat_v1_0 = 100,
};

@interface NSPropertyListSerialization : NSObject
+ (NSData*)dataWithPropertyList:(id)plist format:(NSPropertyListFormat)format options:(NSUInteger)opt error:(NSError**)error;
+ (id)propertyListWithData:(NSData*)data options:(NSPropertyListMutabilityOptions)opt format:(NSPropertyListFormat*)format error:(NSError**)error;
@end

@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
@property(readonly, copy) NSString* resourcePath;
@end

@interface NSAppleScript : NSObject
- (instancetype)initWithSource:(NSString*)source;
- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary<NSString*, id>**)errorInfo;
@end

extern NSString* const NSAppleScriptErrorMessage;
extern NSString* const NSAppleScriptErrorNumber;
extern NSURLResourceKey const NSURLVolumeAvailableCapacityForImportantUsageKey;
extern NSURLResourceKey const NSURLVolumeAvailableCapacityKey;
extern NSURLResourceKey const NSURLVolumeTotalCapacityKey;

#ifdef __cplusplus
extern "C"
#endif
NSString* NSHomeDirectory(void);
