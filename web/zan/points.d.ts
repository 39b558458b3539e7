// Polygons and other arrays of points: [x, y, x, y, …] in a Float64Array or any array of numbers.
import type { PlaneEq, Vector2, Vector3 } from './functions.js';

/** The convex hull: its vertices. */
export function computeConvexHull(points: ArrayLike<number>): Float64Array;
/** Whether a closed polygon turns in the same direction at all its vertices. */
export function isConvex(vertices: ArrayLike<number>): boolean;
/** The signed area of a polygon: positive when the vertices run clockwise on a screen. */
export function signedPolygonArea2D(vertices: ArrayLike<number>): number;
/** Whether a point is in a polygon, which may be concave, or within a tolerance of it. */
export function isFloatPointInConcavePoly(point: Vector2, vertices: ArrayLike<number>, tolerance?: number): boolean;
/** The same for many points; 1 or 0 for each. */
export function arePointsInConcavePoly(points: ArrayLike<number>, vertices: ArrayLike<number>, tolerance?: number): Uint8Array;
/** The part of a polygon that lies inside a convex one. */
export function polyPolyClip2D(clipPolygon: ArrayLike<number>, subject: ArrayLike<number>): Float64Array;
/** The plane of an outline in space, [x, y, z, x, y, z, …], and the mean of its points. */
export function getPlaneEquation(points: ArrayLike<number>): { plane: PlaneEq; centroid: Vector3 };
/** The compass angle of a direction, in degrees: up 360, right 90, down 180, left 270. */
export function vecToAngle(direction: Vector2): number;
