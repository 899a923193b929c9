// A plugin of clang-tidy: has its checks look at this project's code only, and not, at four times the cost,
// at all that the headers of the toolkit and the standard library declare, of which nothing is reported
// anyway.

#include <clang-tidy/ClangTidyCheck.h>
#include <clang-tidy/ClangTidyModule.h>
#include <clang-tidy/ClangTidyModuleRegistry.h>
#include <clang/ASTMatchers/ASTMatchFinder.h>

#include <vector>

using clang::ast_matchers::MatchFinder;

namespace
{

/// Reports nothing. It matches what is matched first, the translation unit, and leaves of its declarations
/// those to be walked through that do not come from the system's headers.
class OwnCode : public clang::tidy::ClangTidyCheck
{
public:
    using ClangTidyCheck::ClangTidyCheck;

    void registerMatchers(MatchFinder* finder) override
    {
        finder->addMatcher(clang::ast_matchers::translationUnitDecl(), this);
    }

    void check(const MatchFinder::MatchResult& result) override
    {
        const clang::SourceManager& sources = *result.SourceManager;
        std::vector<clang::Decl*> own;
        for (clang::Decl* declaration : result.Context->getTranslationUnitDecl()->decls()) {
            const clang::SourceLocation place = sources.getExpansionLoc(declaration->getLocation());
            if (place.isValid() && !sources.isInSystemHeader(place)) {
                own.push_back(declaration);
            }
        }
        result.Context->setTraversalScope(own);
    }
};

class Module : public clang::tidy::ClangTidyModule
{
public:
    void addCheckFactories(clang::tidy::ClangTidyCheckFactories& factories) override
    {
        factories.registerCheck<OwnCode>("own-code");
    }
};

const clang::tidy::ClangTidyModuleRegistry::Add<Module> registration("own-code", "");

} // namespace
