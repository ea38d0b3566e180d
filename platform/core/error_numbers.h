#pragma once
// Every error number the component raises, grouped by who first defined it: the runtime, the
// database engine (DAO) or the component itself. Callers trap these numbers, so a number
// never changes once it is here.

// Runtime error numbers, as the original runtime raised them.
namespace cp::err {
inline constexpr long kInvalidProcedureCall = 5;
inline constexpr long kOverflow = 6;
inline constexpr long kOutOfMemory = 7;
inline constexpr long kSubscriptOutOfRange = 9;
inline constexpr long kTypeMismatch = 13;
inline constexpr long kOutOfStackSpace = 28;       // an event raised from its own handler
inline constexpr long kFileNotFound = 53;
inline constexpr long kFileAlreadyExists = 58;
inline constexpr long kPermissionDenied = 70;
inline constexpr long kPathNotFound = 76;
inline constexpr long kObjectVariableNotSet = 91;
inline constexpr long kInvalidUseOfNull = 94;
inline constexpr long kArrayElementMissing = 340;  // no element of that index
inline constexpr long kNotAnArray = 343;           // an index given to a plain control
inline constexpr long kIndexRequired = 344;        // a control array used without index
inline constexpr long kInvalidPropertyValue = 380;
inline constexpr long kInvalidPropertyArrayIndex = 381;
inline constexpr long kTextIsReadOnly = 383;
inline constexpr long kObjectRequired = 424;
inline constexpr long kCannotCreateObject = 429;
inline constexpr long kPropertyNotFound = 438;  // "object doesn't support this property or method"
inline constexpr long kControlNotFound = 730;   // no control of that name
}  // namespace cp::err

// Database errors, with the numbers DAO gives the same faults.
namespace cp::dao::daoerr {
inline constexpr long kNoCurrentRecord = 3021;  // "No hay registro activo."
inline constexpr long kFileNotFound = 3024;
inline constexpr long kReadOnly = 3027;
inline constexpr long kInvalidAccount = 3029;  // not a valid account name or password
inline constexpr long kInvalidPath = 3044;
inline constexpr long kTooFewParameters = 3061;          // unknown column in a statement
inline constexpr long kUnknownFieldInExpression = 3070;  // unknown column in a criterion
inline constexpr long kSyntaxInQuery = 3075;
inline constexpr long kSyntaxInExpression = 3077;
inline constexpr long kTableNotFound = 3078;
inline constexpr long kAmbiguousField = 3079;
inline constexpr long kUndefinedFunction = 3085;
inline constexpr long kTextAfterStatement = 3142;
inline constexpr long kEngineFailure = 3146;
inline constexpr long kConnectionFailed = 3151;
inline constexpr long kRecordDeleted = 3167;  // the record was deleted by another user
inline constexpr long kRecordReferenced = 3200;  // related records still use the record
inline constexpr long kLocked = 3218;
inline constexpr long kInvalidOperation = 3219;
inline constexpr long kNotForThisType = 3251;
inline constexpr long kBusy = 3260;
inline constexpr long kItemNotFound = 3265;  // "Elemento no encontrado en esta colección."
inline constexpr long kUnsupported = 3296;   // valid Jet SQL that cannot be translated
inline constexpr long kSubqueryFields = 3306;  // IN (SELECT ...) giving more than one field
inline constexpr long kUnrecognisedFormat = 3343;
inline constexpr long kQueryTooComplex = 3360;
inline constexpr long kObjectInvalid = 3420;  // closed database or recordset
}  // namespace cp::dao::daoerr

// The component's own numbers, above the runtime's and DAO's ranges.
namespace cp::ownerr {
inline constexpr long kLinkerAlreadyInitialized = 20000;
inline constexpr long kLinkerNotInitialized = 20001;
// An Access file that cannot be imported.
inline constexpr long kNotAnAccessFile = 20010;       // not an Access database at all
inline constexpr long kAccessFileTruncated = 20011;   // cut short or damaged
inline constexpr long kAccessVersionUnreadable = 20012;  // a version the reader does not know
}  // namespace cp::ownerr
