// Filling an array with the deviates of a distribution object that lives for the call.
#pragma once

#include <algorithm>

#include "distributions/objects/uniform_source.h"
#include "frame/call_frame.h"
#include "frame/missing_value.h"
#include "frame/status.h"

namespace zul::sampling {

// The arithmetic. It owns nothing: what owns the object calls it through a pointer, since a trap in a
// function with destructors to run may end the process.
template <typename Object>
int SetUpAndDraw(Object* object, objects::UniformSource* source, double* out, unsigned count) {
    object->SetGenerator(source);
    if constexpr (requires { object->DrawMany(out, count); }) {
        object->DrawMany(out, count);
    } else {
        for (unsigned i = 0; i < count; ++i)
            out[i] = object->Object::Draw();  // not by the virtual table
    }
    return kSuccess;
}

// Without a check of the parameters. No deviates need no object, whose construction may trap.
template <typename Object, typename... Types>
int BuildAndDraw(objects::UniformSource* source, double* out, unsigned count, Types... parameters) {
    int (*volatile draw)(Object*, objects::UniformSource*, double*, unsigned) = &SetUpAndDraw<Object>;
    if (count == 0) return kSuccess;
    Object object(parameters...);
    return draw(&object, source, out, count);
}

// For rejection methods, which would try for ever with bad parameters: NaN and no uniforms instead.
template <typename Object, typename... Types>
int BuildCheckAndDraw(objects::UniformSource* source, double* out, unsigned count, Types... parameters) {
    int (*volatile draw)(Object*, objects::UniformSource*, double*, unsigned) = &SetUpAndDraw<Object>;
    if (count == 0) return kSuccess;
    Object object(parameters...);
    if (object.IsValid()) return draw(&object, source, out, count);
    std::fill_n(out, count, frame::kQuietNaN);
    return kSuccess;
}

template <typename Object, typename... Types>
int FramedDeviates(objects::UniformSource* source, double* out, unsigned count, Types... parameters) {
    return frame::InFrame(&BuildAndDraw<Object, Types...>, source, out, count, parameters...);
}

template <typename Object, typename... Types>
int FramedCheckedDeviates(objects::UniformSource* source, double* out, unsigned count, Types... parameters) {
    return frame::InFrame(&BuildCheckAndDraw<Object, Types...>, source, out, count, parameters...);
}

}  // namespace zul::sampling
