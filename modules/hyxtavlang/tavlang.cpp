// Loading of robot models: choices and results.
#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyxtavlang/load_result.h"
#include "platform/hyxtavlang/opt_params.h"

namespace {

using hyxtavlang::LoadResult;

constexpr Declared tavlang_rows[] = {
    FUNCTION(new_OptParams, NEW(hyxtavlang::OptParams, ())),
    FUNCTION(delete_OptParams, DELETE(hyxtavlang::OptParams)),
    FUNCTION(OptParams_setFixedBase, METHOD(hyxtavlang::OptParams, setFixedBase, (bool))),
    FUNCTION(OptParams_getFixedBase, METHOD(hyxtavlang::OptParams, getFixedBase, () const)),
    FUNCTION(OptParams_addSearchPath, METHOD(hyxtavlang::OptParams, addSearchPath, (std::string const&))),
    FUNCTION(OptParams_getSearchPaths, METHOD(hyxtavlang::OptParams, getSearchPaths, () const)),
    FUNCTION(OptParams_setSelfCollision, METHOD(hyxtavlang::OptParams, setSelfCollision, (bool))),
    FUNCTION(OptParams_getSelfCollision, METHOD(hyxtavlang::OptParams, getSelfCollision, () const)),
    FUNCTION(OptParams_setNamePrefix, METHOD(hyxtavlang::OptParams, setNamePrefix, (std::string const&))),
    FUNCTION(OptParams_getNamePrefix, METHOD(hyxtavlang::OptParams, getNamePrefix, () const)),
    REGISTER(hyxtavlang::OptParams, OptParams),
    INIT(OptParams),
    FUNCTION(new_LoadResult, NEW(hyxtavlang::LoadResult, ())),
    FUNCTION(delete_LoadResult, DELETE(hyxtavlang::LoadResult)),
    FUNCTION(LoadResult_isSuccess, METHOD(hyxtavlang::LoadResult, isSuccess, () const)),
    FUNCTION(LoadResult_getAssembly, SHARED(METHOD(hyxtavlang::LoadResult, getAssembly, () const))),
    FUNCTION(LoadResult_getModelName, METHOD(hyxtavlang::LoadResult, getModelName, () const)),
    FUNCTION(LoadResult_getErrors, METHOD(hyxtavlang::LoadResult, getErrors, () const)),
    FUNCTION(LoadResult_getModel, METHOD(hyxtavlang::LoadResult, getModel, () const)),
    FUNCTION(LoadResult_getJoints, SHARED(METHOD(hyxtavlang::LoadResult, getJoints, () const))),
    FUNCTION(LoadResult_getSensorFrame,
             SHARED(METHOD(hyxtavlang::LoadResult, getSensorFrame, (std::string const&) const))),
    FUNCTION(LoadResult_getSensorBody,
             SHARED(METHOD(hyxtavlang::LoadResult, getSensorBody, (std::string const&) const))),
    REGISTER(hyxtavlang::LoadResult, LoadResult),
    INIT(LoadResult),
};

} // namespace

ROWS(tavlang_rows);
